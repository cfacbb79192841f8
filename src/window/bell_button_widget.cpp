#include "window/bell_button_widget.h"

#include <QHBoxLayout>
#include <QLabel>

#include "window/icon_button_widget.h"

namespace pallomir {

BellButton::BellButton(QWidget* parent)
    : QWidget(parent), pctBell_(new IconButton(this, "pctBell", "bell", "Unseen alerts")) {
  pctBell_->chosen = [this] {
    if (chosen) chosen();
  };
  setFocusProxy(pctBell_);
  lblBell_ = new QLabel(this);
  lblBell_->setObjectName("lblBell");
  lblBell_->setTextFormat(Qt::PlainText);
  lblBell_->setMinimumWidth(1);  // gives way in a narrow window
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 0, 0, 0);
  row->setSpacing(2);
  row->addWidget(pctBell_);
  row->addWidget(lblBell_);
  hide();
}

void BellButton::ShowCount(std::size_t count) {
  constexpr std::size_t kMost = 999;
  lblBell_->setText(count > kMost ? "999+" : QString::number(count));
  const QString text = (count == 1 ? QString("1 unseen alert") : QString("%1 unseen alerts").arg(count)) +
                       ": open the journal";
  pctBell_->setToolTip(text);
  pctBell_->setAccessibleName(text);
  setVisible(count > 0);
}

}  // namespace pallomir
