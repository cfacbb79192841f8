#pragma once

#include "base/civil_time.h"
#include "map/map_view.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// A unit went over a zone's border.
struct ZoneCrossing {
  Millis utc = 0;  ///< between the times of the points around it, by its share of the way
  ZoneOrdinal zone = ZoneTree::kNone;
  bool hasEntered = false;  ///< or left
  bool isAlert = false;
  bool isLate = false;  ///< it came to light by a point that came after later ones
  WorldPoint place;
  Millis wayEnd = 0;  ///< UTC of the point that ended the way on which it lies
  bool operator==(const ZoneCrossing&) const = default;
};

/// Whether both are the same crossing, whatever is said of it.
inline bool IsSameCrossing(const ZoneCrossing& a, const ZoneCrossing& b) {
  return a.utc == b.utc && a.zone == b.zone && a.hasEntered == b.hasEntered;
}

/// A unit that wavers over a border within both limits has crossed it once.
struct FlickerLimits {
  Millis time = 30 * kSecond;
  double meters = 30;
};

}  // namespace pallomir
