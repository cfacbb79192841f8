#include "window/alert_windows_widget.h"

#include <utility>

#include "alerts/formPersist.h"
#include "commands/command.h"
#include "platform/qt/qt_menu.h"
#include "window/formMain.h"
#include "window/state_button_widget.h"

namespace pallomir {
namespace {

constexpr char kHeard[] = "Alerts are heard";

}  // namespace

AlertWindows::AlertWindows(formMain& window)
    : window_(window), muteButton_(new StateButton(&window, "Mute", "sound_on", kHeard)) {
  muteButton_->OpensMenu();
  window_.AddState(muteButton_);
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
  if (!muteButton_) return;
  const QString word = QString::fromStdString(text);
  muteButton_->ShowState(isMuted ? "sound_off" : "sound_on", isMuted ? word : kHeard, word);
}

}  // namespace pallomir
