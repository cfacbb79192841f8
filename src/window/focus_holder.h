#pragma once

#include <memory>

#include "platform/event_loop.h"
#include "window/frame_view.h"

namespace pallomir {

/// Keeps the keyboard with the map, unless the user works with the caption line or a menu.
class FocusHolder {
 public:
  FocusHolder(FrameView& view, EventLoop& loop);

  void Open();  ///< from now on it looks where the keyboard is, four times a second
  void Close();

  /// The user works with the caption line or a menu: the keyboard stays there for now.
  void HoldOff(bool hold) { held_ = hold; }
  bool IsHeldOff() const { return held_; }
  /// The map may have lost the keyboard.
  void Return();

 private:
  FrameView& view_;
  bool held_ = false;
  bool closed_ = false;
  std::unique_ptr<Timer> tmrFocusGetter_;
};

}  // namespace pallomir
