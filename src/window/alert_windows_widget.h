#pragma once

#include <QPointer>
#include <memory>

#include "alerts/alert_view.h"
#include "platform/menu_model.h"

namespace pallomir {

class QtMenu;
class StateButton;
class formMain;
class formPersist;

/// What is seen of the alerts: the window of a persistent one, and a button in the caption line.
class AlertWindows : public AlertView {
 public:
  /// Puts the button into the caption line. `window` outlives this object.
  explicit AlertWindows(formMain& window);
  ~AlertWindows() override;

  /// The button opens the menu from now on.
  void Attach(MenuModel& menus);

  void ShowPersist(std::function<void()> closed) override;
  void HidePersist() override;
  void RaisePersist() override;
  void ShowMute(bool isMuted, const std::string& text) override;

 private:
  formMain& window_;
  std::unique_ptr<formPersist> formPersist_;
  QPointer<StateButton> muteButton_;  // the window's
  std::unique_ptr<QtMenu> muteMenu_;
};

}  // namespace pallomir
