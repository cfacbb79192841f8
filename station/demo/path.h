#pragma once

#include <initializer_list>
#include <vector>

#include "station/common/geo.h"

namespace pallomir::station {

/// A corner of a path that a vehicle follows.
struct PathVertex {
  Place place;
  double distance = 0;     ///< metres from the path's start
  double speedLimit = 0;   ///< metres a second, on the piece that leads here
  double stopSeconds = 0;  ///< how long a vehicle stands here, more or less; 0 = not at all
  bool crossing = false;   ///< a street crossing, where the vehicle may have to wait
  double heading = 0;      ///< compass degrees of the piece that leads here; of the first piece at the start
  double cornerSpeed = 0;  ///< metres a second, what the turn at this vertex allows
};

/// The corners in order, at least two. The pieces between them are so short that constant acceleration on
/// each looks like driving.
using Path = std::vector<PathVertex>;

/// Lays a path along roads, place by place. Every road begins where the one before ended. Speed limits are in
/// miles an hour.
class PathBuilder {
 public:
  explicit PathBuilder(Place start);

  /// A highway bends gently through its places.
  PathBuilder& Highway(double limitMph, std::initializer_list<Place> places);

  /// Streets run straight from crossing to crossing.
  PathBuilder& Streets(double limitMph, const std::vector<Place>& crossings);

  /// The vehicle stands for about so many seconds at the place that has been reached.
  PathBuilder& Stop(double seconds);

  /// The finished path, which must have a road. The builder is empty afterwards.
  Path Take();

 private:
  void AddPiece(Place place, double limitMph);

  Path path_;
};

/// The same path driven the other way.
Path Reversed(const Path& path);

/// A town's street grid: crossings are counted in blocks from an origin.
struct TownGrid {
  Place origin;
  double bearing = 0;       ///< compass direction in which rows count up, degrees
  double columnMeters = 0;  ///< length of a block across, to the right of the bearing
  double rowMeters = 0;     ///< length of a block along the bearing

  struct Crossing {
    double column = 0;
    double row = 0;
  };
  std::vector<Place> At(std::initializer_list<Crossing> crossings) const;
};

}  // namespace pallomir::station
