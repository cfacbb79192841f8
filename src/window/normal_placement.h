#pragma once

#include <optional>

#include "platform/geometry.h"
#include "platform/main_window.h"
#include "settings/stored_choices.h"

namespace pallomir {

/// Gathers where the normal window lies until it is time to store it.
class NormalPlacement {
 public:
  /// The window, in the normal mode as far as is known, lies there now.
  void Note(const PixelRect& bounds);
  /// It was the desktop that chose this place: the one noted before it counts.
  void Disown(const PixelRect& bounds);
  /// The place to store, once; nothing when nothing was noted.
  std::optional<PixelRect> Take();

 private:
  std::optional<PixelRect> last_;
  std::optional<PixelRect> before_;
};

/// Whether the bounds are a half or a quarter of the area, as a desktop gives them to a window that is pushed
/// against an edge or a corner.
bool IsTileOf(const PixelRect& bounds, const PixelRect& area);

/// Whether the bounds are about as large as the area, as those of a maximised window are. They may be a
/// little smaller: with several screens the area is not known exactly.
bool IsAboutAsLargeAs(const PixelRect& bounds, const PixelRect& area);

/// Whether the window lies where the desktop has put it rather than the user.
bool IsPlacedByDesktop(const MainWindow& window);

/// Stores the bounds; the place only where it means something. What is stored already is left alone.
void SavePlacement(WindowChoices& stored, const PixelRect& bounds, bool knowsPosition);

}  // namespace pallomir
