#include "zones/zone_progress_widget.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace pallomir {

ZoneProgress::ZoneProgress(QWidget* owner)
    : QDialog(owner), text_(new QLabel(this)), bar_(new QProgressBar(this)) {
  constexpr int kWidth = 420;
  setObjectName("zoneProgress");
  setWindowTitle("Zones");
  text_->setTextFormat(Qt::PlainText);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* rows = new QVBoxLayout(this);
  for (QWidget* row :
       {static_cast<QWidget*>(text_), static_cast<QWidget*>(bar_), static_cast<QWidget*>(buttons)})
    rows->addWidget(row);
  setFixedWidth(kWidth);
}

void ZoneProgress::Show(const QString& text, int percent) {
  const auto margins = layout()->contentsMargins();
  const int room = width() - margins.left() - margins.right();
  text_->setText(text_->fontMetrics().elidedText(text, Qt::ElideMiddle, room));
  text_->setToolTip(text);
  bar_->setAccessibleName(text);
  bar_->setMaximum(percent < 0 ? 0 : 100);
  bar_->setValue(percent);
  if (!isVisible()) show();
}

void ZoneProgress::reject() {
  hide();
  if (cancelled) cancelled();
}

}  // namespace pallomir
