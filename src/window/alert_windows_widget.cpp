#include "window/alert_windows_widget.h"

#include <utility>

#include "alerts/formPersist.h"
#include "commands/command.h"
#include "platform/qt/qt_menu.h"
#include "window/caption_line_widget.h"
#include "window/formMain.h"
#include "window/mute_button_widget.h"

namespace pallomir {

AlertWindows::AlertWindows(formMain& window) : window_(window) {
  auto* line = static_cast<CaptionLine*>(window_.findChild<QWidget*>("captionLine"));
  muteButton_ = new MuteButton(line);
  line->AddState(muteButton_);
}

AlertWindows::~AlertWindows() = default;

void AlertWindows::Attach(MenuModel& menus) {
  muteMenu_ = std::make_unique<QtMenu>(menus, Command::kMute, &window_);
  muteButton_->chosen = [this] {
    muteMenu_->PopUp(muteButton_->mapToGlobal(QPoint(0, muteButton_->height())));
  };
}

void AlertWindows::ShowPersist(std::function<void()> closed) {
  if (!formPersist_) formPersist_ = std::make_unique<formPersist>(&window_);
  formPersist_->closed = std::move(closed);
  formPersist_->ShowOver();
}

void AlertWindows::HidePersist() {
  if (formPersist_) formPersist_->HideAway();
}

void AlertWindows::RaisePersist() {
  if (formPersist_) formPersist_->Raise();
}

void AlertWindows::ShowMute(bool isMuted, const std::string& text) {
  if (muteButton_) muteButton_->ShowMute(isMuted, QString::fromStdString(text));
}

}  // namespace pallomir
