#pragma once

namespace pallomir {

/// The boxes that lie over the main window, and the end of them all. None waits for the user.
class BoxesView {
 public:
  virtual ~BoxesView() = default;

  virtual void ShowAbout() = 0;
  virtual void ShowSplash() = 0;
  virtual void TickStatus(int line) = 0;  ///< 1..17
  virtual void HideSplash() = 0;
  virtual void ShowMapUpdating() = 0;
  virtual void HideMapUpdating() = 0;
  /// Unloads all secondary windows.
  virtual void CloseWindows() = 0;
  /// The shut-down is done: the process ends with this exit code.
  virtual void EndApplication(int exitCode) = 0;
};

}  // namespace pallomir
