#include "window/mute_button_widget.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/accessible_widget.h"
#include "window/icon_button_widget.h"

namespace pallomir {

MuteButton::MuteButton(QWidget* parent)
    : QWidget(parent), pctMute_(new IconButton(this, "pctMute", "sound_on", "Alerts are heard")) {
  SetAccessible(pctMute_, {.role = QAccessible::ButtonMenu, .opensMenu = true});
  pctMute_->setAccessibleName("Alerts are heard");
  pctMute_->chosen = [this] {
    if (chosen) chosen();
  };
  setFocusProxy(pctMute_);
  lblMute_ = new QLabel(this);
  lblMute_->setObjectName("lblMute");
  lblMute_->setTextFormat(Qt::PlainText);
  lblMute_->setMinimumWidth(1);  // gives way in a narrow window
  lblMute_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  row->addWidget(pctMute_);
  row->addWidget(lblMute_);
}

void MuteButton::ShowMute(bool isMuted, const QString& text) {
  pctMute_->SetPicture(isMuted ? "sound_off" : "sound_on", isMuted ? text : "Alerts are heard");
  lblMute_->setText(text);
  lblMute_->setVisible(isMuted);
}

}  // namespace pallomir
