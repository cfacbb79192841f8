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
  double stopSeconds = 0;  ///< how long a vehicle stands here, more or less; 0 = it does not
  bool crossing = false;   ///< a street crossing, where it may have to wait
  double heading = 0;      ///< compass degrees of the piece that leads here; of the first piece at the start
  double cornerSpeed = 0;  ///< metres a second, what the turn at this vertex allows
};

/// Pieces short enough that constant acceleration on each looks like driving.
using Path = std::vector<PathVertex>;

/// Lays a path along roads, place by place. Every road begins where the one before ended.
class PathBuilder {
 public:
  explicit PathBuilder(Place start);

  /// A highway bends gently through its places.
  PathBuilder& Highway(double limitMph, std::initializer_list<Place> places);

  /// Streets run straight from crossing to crossing.
  PathBuilder& Streets(double limitMph, const std::vector<Place>& crossings);

  /// The vehicle stands for about this long at the place reached.
  PathBuilder& Stop(double seconds);

  /// The finished path; the builder is spent.
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
