#pragma once

#include "platform/geometry.h"
#include "platform/main_window.h"

namespace pallomir {

/// The main window's frame as its parts see it.
class FrameView {
 public:
  virtual ~FrameView() = default;

  /// Places the map, the caption line and the timeline in the window as large as it is now.
  virtual void LayOut() = 0;
  /// The browser control's size, the unused 18 pixels of its width included.
  virtual PixelSize BrowserSize() const = 0;
  virtual void ShowDemoMode(bool on) = 0;
  /// Which of the caption line's buttons is the pressed one; grips are there in the normal mode only.
  virtual void ShowWindowMode(WindowMode mode) = 0;
  /// Gives the keyboard to `FocusGetter`, unless it or a date picker has it, a popup is open or another
  /// window is active.
  virtual void ReturnFocus() = 0;
};

}  // namespace pallomir
