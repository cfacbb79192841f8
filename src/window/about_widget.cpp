#include "window/about_widget.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace pallomir {
namespace {

constexpr int kLeastWidth = 240;  // room for the window's caption

}  // namespace

AboutBox::AboutBox(QWidget* owner, const QString& title, const QString& version, const QDate& date)
    : QDialog(owner) {
  setObjectName("formSplash_About");
  setWindowTitle("About " + title);
  auto* lblTitle = new QLabel(title, this);
  lblTitle->setObjectName("lblTitle");
  QFont font = lblTitle->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  lblTitle->setFont(font);
  auto* lblVersion = new QLabel(VersionText(version, date), this);
  lblVersion->setObjectName("lblVersion");
  lblVersion->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lblVersion->setMinimumWidth(kLeastWidth);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(20, 16, 20, 12);
  rows->setSpacing(10);
  rows->addWidget(lblTitle);
  rows->addWidget(lblVersion);
  rows->addWidget(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
}

void AboutBox::ShowBox() {
  show();
  raise();
  activateWindow();
}

QString VersionText(const QString& version, const QDate& date) {
  return QString("Version: %1\n\nDate: %2").arg(version, date.toString(Qt::ISODate));
}

QDate ExecutableDate() { return QFileInfo(QCoreApplication::applicationFilePath()).lastModified().date(); }

}  // namespace pallomir
