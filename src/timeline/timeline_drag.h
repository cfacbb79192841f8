#pragma once

#include <optional>

namespace pallomir {

/// What the mouse does on the timeline, by number.
enum class MouseAction { kMove = 0, kDown = 1, kUp = 2 };

/// A part of the time window as shares of its length: 0 <= from < to <= 1.
struct WindowShares {
  double from = 0;
  double to = 0;
  bool operator==(const WindowShares&) const = default;
};

/// `shpZoomInterval`, in twips from the left edge of the data strip.
struct RubberBand {
  int left = 0;
  int width = 0;
  bool operator==(const RubberBand&) const = default;
};

/// The drag over the strip that chooses a part of the time window. Positions and widths are twips of the data
/// strip.
class TimelineDrag {
 public:
  /// `left` says for kDown and kUp that it is the left button, for kMove that the left button is held.
  /// `width` is the data strip's. The result is what a drag chose that ends with this event.
  std::optional<WindowShares> TimelineMouse(MouseAction action, bool left, double x, int width);

  /// Escape was pressed or the mouse was taken away: nothing is chosen.
  void Cancel();

  bool IsActive() const { return active_; }  ///< DragActive
  /// The rubber band while it is to be seen.
  const std::optional<RubberBand>& Band() const { return band_; }

 private:
  std::optional<WindowShares> End(int position, int width);

  bool active_ = false;
  int anchor_ = 0;  // DragAnchorX
  std::optional<RubberBand> band_;
};

}  // namespace pallomir
