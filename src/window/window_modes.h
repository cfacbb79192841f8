#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "platform/geometry.h"
#include "platform/main_window.h"

namespace pallomir {

/// What a change of mode asks of the window. Effects are applied in the order in which they stand.
namespace window_effect {
struct SetTopmost {
  bool topmost = false;
  bool operator==(const SetTopmost&) const = default;
};
/// The state to ask the system for.
struct SetState {
  WindowMode state = WindowMode::kNormal;
  bool operator==(const SetState&) const = default;
};
struct SetBounds {
  PixelRect bounds;
  bool operator==(const SetBounds&) const = default;
};
/// The resize rule, once; it comes last.
struct Resize {
  bool operator==(const Resize&) const = default;
};
}  // namespace window_effect

using WindowEffect = std::variant<window_effect::SetTopmost, window_effect::SetState,
                                  window_effect::SetBounds, window_effect::Resize>;
using WindowEffects = std::vector<WindowEffect>;

/// Where the window stands when a button is pressed.
struct WindowSurroundings {
  PixelRect bounds;    ///< of the window
  PixelRect workArea;  ///< the part of its screen that no panel covers
  PixelRect screen;    ///< its whole screen
  /// With a window manager the window asks for a state and takes the size it gets; without one it places
  /// itself.
  bool hasWindowManager = true;
};

/// The bounds, moved if need be so that the window's caption can be reached on one of the screens.
PixelRect MovedIntoReach(PixelRect bounds, const std::vector<PixelRect>& screens);

/// The window's mode and the bounds to return to. Each button's function changes the mode and returns what is
/// to be done, nothing when the button does nothing in this mode. From then on IsChanging() holds, which
/// mutes the resize rule, until the caller has applied the effects before Resize and calls ChangeApplied().
class WindowModes {
 public:
  WindowMode Mode() const { return mode_; }
  bool IsFullScreen() const { return mode_ == WindowMode::kFullScreen; }
  bool IsChanging() const { return changing_; }
  void ChangeApplied() { changing_ = false; }
  /// Whether the window's bounds now are those to return to and to store.
  bool IsPlacementNormal() const { return mode_ == WindowMode::kNormal && !changing_; }

  WindowEffects FullScreen(const WindowSurroundings& at);
  WindowEffects Maximise(const WindowSurroundings& at);
  WindowEffects Normal(const WindowSurroundings& at);
  WindowEffects Minimise(const WindowSurroundings& at);
  /// Double click on the caption: maximise, or back to normal.
  WindowEffects ToggleMaximised(const WindowSurroundings& at);

  /// The system has given the window another state of its own accord, or has done what it was asked. Its
  /// sizes are never answered with others. Not to be called without a window manager.
  WindowEffects StateGiven(WindowMode state);
  /// The minimised window was exposed, activated or got input: it has the mode from before.
  WindowEffects MinimiseEnded();

 private:
  WindowEffects Enter(WindowMode mode, WindowEffects effects);
  void KeepNormalBounds(const WindowSurroundings& at);
  void DropTopmost(WindowEffects& effects) const;

  WindowMode mode_ = WindowMode::kNormal;
  WindowMode beforeMinimised_ = WindowMode::kNormal;
  bool changing_ = false;
  // Kept while the window is out of the normal mode, if it left by a button. Of the system's own changes the
  // sizes may come first, so it is left to the system to undo them.
  std::optional<PixelRect> normalBounds_;
};

}  // namespace pallomir
