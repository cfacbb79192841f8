#pragma once

#include <cstdint>
#include <memory>

#include "zones/zone_query.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// Positions in 1/600000 degree, all four limits included; empty where a least is above its most.
struct PositionBox {
  std::int32_t minLatitude = 0;
  std::int32_t maxLatitude = -1;
  std::int32_t minLongitude = 0;
  std::int32_t maxLongitude = -1;

  bool IsEmpty() const { return minLatitude > maxLatitude || minLongitude > maxLongitude; }
  bool Contains(std::int32_t latitude, std::int32_t longitude) const {
    return latitude >= minLatitude && latitude <= maxLatitude && longitude >= minLongitude &&
           longitude <= maxLongitude;
  }
  bool Meets(const PositionBox& other) const {
    return minLatitude <= other.maxLatitude && other.minLatitude <= maxLatitude &&
           minLongitude <= other.maxLongitude && other.minLongitude <= maxLongitude;
  }
  bool operator==(const PositionBox&) const = default;
};

/// Half the height of the rectangle around a place clicked at this zoom, in degrees: the same from zoom 13
/// on, twice as much for each zoom below.
double HalfHeightAt(int zoom);

/// Where a search looks for positions: a rectangle of degrees or a zone. A copy shares what it knows of the
/// zones; several threads may ask at once.
class SearchArea {
 public:
  /// The positions between these degrees; those on an edge are outside.
  static SearchArea Rectangle(double minLat, double maxLat, double minLng, double maxLng);

  /// As high as twice `halfHeight`, in degrees, and as wide on the ground. Does not go on beyond the date
  /// line.
  static SearchArea Around(double lat, double lng, double halfHeight);

  /// The positions on whose way through the zones (see ProjectedZoneTree) this one lies. The tree is not
  /// needed afterwards.
  static SearchArea OfZone(const ZoneTree& zones, ZoneOrdinal zone);

  /// A box around the area; nothing outside it is inside.
  const PositionBox& Box() const { return box_; }

  /// In 1/600000 degree.
  bool Contains(std::int32_t latitude, std::int32_t longitude) const;

 private:
  PositionBox box_;
  std::shared_ptr<const ProjectedZoneTree> zones_;  // of a zone; null: all of the box is inside
  ZoneOrdinal zone_ = 0;
  ZoneOrdinal zoneEnd_ = 0;  // behind its last descendant
};

}  // namespace pallomir
