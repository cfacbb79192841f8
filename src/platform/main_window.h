#pragma once

#include <cstdint>
#include <vector>

#include "platform/geometry.h"

namespace pallomir {

/// The values are those of the stored "WindowState".
enum class WindowMode { kNormal = 0, kMinimised = 1, kMaximised = 2, kFullScreen = 99 };

/// The main window as a window: its place, its state and its being in front. What the rooms
/// show in it, they show through their views.
class MainWindow {
 public:
  virtual ~MainWindow() = default;

  /// The system's number of the window.
  virtual std::int64_t Handle() const = 0;
  /// The part of the window's screen that no panel covers, and its whole screen.
  virtual PixelRect WorkArea() const = 0;
  virtual PixelRect Screen() const = 0;
  /// Whether somebody else places windows. Without one the window has to do it itself.
  virtual bool HasWindowManager() const = 0;
  /// Whether the system tells and takes positions; where not, only sizes mean something.
  virtual bool KnowsPosition() const = 0;
  /// All screens, whole.
  virtual std::vector<PixelRect> Screens() const = 0;
  virtual PixelRect Bounds() const = 0;
  /// Whether the system has stretched the window in one direction and not in the other.
  virtual bool IsMaximisedOneWay() const = 0;
  virtual void SetBounds(const PixelRect& bounds) = 0;
  /// Asks the system for the state; what it gives comes as an event.
  virtual void SetState(WindowMode state) = 0;
  virtual void SetTopmost(bool topmost) = 0;
  virtual void Show() = 0;
  /// Brings the window to the front. It takes the keyboard only when no other program's window and none of
  /// our own dialogs is active.
  virtual void BringToForeground() = 0;
  /// The user asks for the window: restored if minimised, brought to the front and given the keyboard.
  virtual void Activate() = 0;
  /// Closes the window as its close button does, which ends the application.
  virtual void Close() = 0;
};

}  // namespace pallomir
