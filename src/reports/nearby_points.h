#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/data_point.h"
#include "map/map_view.h"

namespace pallomir {

/// A point that lies near a place on the map.
struct NearbyPoint {
  std::size_t k = 0;      ///< its unit, from 1
  std::size_t index = 0;  ///< its place among the unit's points, from 0
  double pixels = 0;      ///< from the place
  bool operator==(const NearbyPoint&) const = default;
};

/// A point this many pixels away is not near any more.
inline constexpr double kNearbyPixels = 50;
inline constexpr std::size_t kMostNearby = 10;

/// Finds the points that lie nearest to a place. It keeps the bounding boxes of runs of points, made at the
/// first question, so that of a million points a question looks at some hundred.
class NearbyPoints {
 public:
  using Tracks = std::span<const std::span<const DataPoint>>;

  /// The points are others now.
  void Forget() { boxes_.clear(); }

  /// The nearest points of all tracks, nearest first; of equal distances the one of the first unit, then the
  /// one earlier in time. `unitsPerPixel` is the map's scale; 0, where it is not known, gives none. Tracks
  /// that have changed since the last question have to be forgotten first.
  std::vector<NearbyPoint> Find(Tracks tracks, WorldPoint place, std::int32_t unitsPerPixel);

 private:
  // Of one track: of each run of its points, and of each group of runs.
  struct Boxes {
    std::vector<WorldBox> runs;
    std::vector<WorldBox> groups;
  };

  static Boxes BoxesOf(std::span<const DataPoint> points);

  std::vector<Boxes> boxes_;
};

}  // namespace pallomir
