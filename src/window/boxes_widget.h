#pragma once

#include <functional>

#include "window/boxes_view.h"

class QWidget;

namespace pallomir {

class AboutBox;
class formMapUpdating;
class formSplash;

/// The boxes over the main window, which is their parent.
class WindowBoxes : public BoxesView {
 public:
  explicit WindowBoxes(QWidget* window);

  std::function<void()> closeOthers;  ///< the secondary windows that are none of these

  formSplash& Splash() { return *formSplash_; }

  void ShowAbout() override;
  void ShowSplash() override;
  void TickStatus(int line) override;
  void HideSplash() override;
  void ShowMapUpdating() override;
  void HideMapUpdating() override;
  void CloseWindows() override;
  void EndApplication(int exitCode) override;

 private:
  formSplash* formSplash_;
  formMapUpdating* formMapUpdating_;
  AboutBox* about_;
};

}  // namespace pallomir
