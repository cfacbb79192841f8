#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "map/map_view.h"
#include "reports/clicked_address.h"
#include "reports/nearby_points.h"
#include "reports/point_table_view.h"
#include "timeline/displayed_points.h"
#include "timeline/map_marks.h"

namespace pallomir {

/// The two tables of data points: those nearest to a clicked place, and the fastest ones of the drawing. One
/// of them is open at a time. It closes when the points or the map under it change.
class PointTables {
 public:
  struct Host {
    std::function<bool()> isDrawing;                ///< tiles are being drawn
    std::function<const FastestPoints&()> fastest;  ///< of the drawing that has ended last
    std::function<void(WorldPoint)> centre;         ///< pans the map there, and marks the place
    std::function<void(const std::string& csv)> save;
  };

  /// `map` is what the page shows. All arguments outlive this.
  PointTables(PointTableView& view, const DisplayedPoints& points, const MapView& map, MapMarks& marks,
              ClickedAddress& address, Host host);

  /// The points near the place that was clicked last; without one the window says so.
  void OpenNearby(std::optional<WorldPoint> clicked);
  /// While tiles are drawn it waits for the end.
  void OpenFastest();
  /// False where none is open or waits.
  bool Close();

  // What happens around them.
  void OnTilesDrawn();
  /// Points will come behind those that there are: an open table stays.
  void OnPointsGrow() { nearby_.Forget(); }
  /// The points will be others.
  void OnPointsMove();
  /// The map shows another part of the world, or shows it at another scale. The pan to a point of the table
  /// leaves it open.
  void OnViewMoved();

 private:
  void Show(PointTable table);
  void Mark(std::size_t row);
  void Centre(std::size_t row);

  PointTableView& view_;
  const DisplayedPoints& points_;
  const MapView& map_;
  MapMarks& marks_;
  ClickedAddress& address_;
  Host host_;

  NearbyPoints nearby_;
  bool isFastestWanted_ = false;      // once the tiles are drawn
  std::optional<PointTable> table_;   // that is open
  std::optional<WorldPoint> centre_;  // that the table had the map pan to, at this scale
  std::int32_t centreScale_ = 0;
};

}  // namespace pallomir
