#pragma once

class QWindow;

namespace pallomir {

/// Whether a window manager runs, as far as this platform can be without one: under X11 it is asked,
/// everywhere else there is always one. Needs the application object.
bool WindowManagerRuns();

/// Whether the keyboard belongs to no window of any program. Only X11 can say so; elsewhere it is false.
bool KeyboardIsFree();

/// Whether the window manager has maximised the window in one direction only, as it does with one that it has
/// put against an edge of the screen. Only X11 can say so; elsewhere it is false.
bool IsMaximisedOneWay(const QWindow& window);

}  // namespace pallomir
