#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "map/map_view.h"
#include "platform/event_loop.h"
#include "timeline/displayed_points.h"
#include "timeline/time_window.h"

namespace pallomir {

/// What lies over the map. The main window implements it.
class MarksView {
 public:
  virtual ~MarksView() = default;
  /// The square frame of four thin pictures around a view pixel.
  virtual void ShowPointMarker(ViewPoint at) = 0;
  virtual void HidePointMarker() = 0;
  /// A text for each displayed unit, `txtDP_Info(k)`, along the upper edge of the map.
  virtual void ShowPointInfos(const std::vector<std::string>& texts) = 0;
  virtual void HidePointInfos() = 0;
  /// While Shift is held and the pointer is over the map, lays the panel `picP` over it, which takes the
  /// mouse.
  virtual void ShowCapturePanel() = 0;
  /// The pointer was seen over the map: the help overlays go, unless it is on its way to one.
  virtual void PointerOverMap(ViewPoint at) = 0;
};

/// The marks over the map: the frame around a point, the texts of the points at the instant that the pointer
/// stands for, and the panel on which a box is drawn.
class MapMarks {
 public:
  struct Host {
    std::function<PixelSize()> browserSize;
    std::function<void(const WorldBox&)> boxDrawn;  ///< the map is to be zoomed to it
    /// What else was shown for the pointer's place goes too.
    std::function<void()> pointerLeft = [] {};
    /// The map under the marks has moved, or the points have changed.
    std::function<void()> mapChanged = [] {};
  };

  /// `map` is what the page shows, `window` the time window, local. All arguments outlive the marks.
  MapMarks(MarksView& view, EventLoop& loop, const MapView& map, const DisplayedPoints& points,
           const TimeWindow& window, Host host);

  /// From now on Shift is looked for.
  void Open() { tmrP_->SetEnabled(true); }
  /// Nothing is shown from here on.
  void Close();

  /// Marks a point of unit k (from 1) until the next tick of BoxTimer. Nothing happens where the point is not
  /// there (its index counts from 0), or no zoom is known.
  void ShowPointMarker(std::size_t k, std::size_t index);
  /// Marks a place for some seconds, also while the map moves under it.
  void ShowPlace(WorldPoint place);
  /// Hides the mark and the texts: the map under them has moved, or their points change.
  void HidePointMarker();
  /// Hides the mark of a point, and that of this place where it is the one that is marked.
  void Unmark(std::optional<WorldPoint> place);

  /// The pointer moved over the map, or over the caption line: x in the window.
  void PointerOverMap(ViewPoint at);
  void PointerOverCaption(int x) { ShowPointAtShare(x); }
  /// The pointer left both, or the window is no longer active.
  void HidePointInfos();

  /// A box was drawn on the map with Shift held. Corners in view pixels.
  void RubberBandDrawn(ViewPoint a, ViewPoint b);

 private:
  void ShowPointAtShare(int x);
  bool IsOnMap(ViewPoint at) const;
  ViewPoint PlaceOf(const DataPoint& point) const;
  void OnBoxTick();
  void MarkPlace();

  MarksView& view_;
  const MapView& map_;
  const DisplayedPoints& points_;
  const TimeWindow& window_;
  Host host_;
  bool isClosed_ = false;
  std::optional<WorldPoint> place_;  // that is marked
  std::unique_ptr<Timer> placeTimer_;
  std::unique_ptr<Timer> boxTimer_;
  std::unique_ptr<Timer> tmrP_;
};

}  // namespace pallomir
