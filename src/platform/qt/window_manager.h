#pragma once

namespace pallomir {

/// Whether a window manager runs, as far as this platform can be without one: under X11 it is asked,
/// everywhere else there is always one. Needs the application object.
bool WindowManagerRuns();

}  // namespace pallomir
