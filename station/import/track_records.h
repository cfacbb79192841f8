#pragma once

#include <vector>

#include "station/import/recording.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// Records made of recorded points, as a store takes them.
struct TrackRecords {
  std::vector<WireRecord> records;  ///< strictly ascending in time, flags clear
  std::size_t outOfOrder = 0;       ///< points that came later in the recording than in time
};

/// The whole days to add to all points so that the last day of them (UTC; only the years 2000 to 2031 count)
/// becomes `today`, which is midnight of a date. 0 without such points.
Millis ShiftToDay(const std::vector<TrackPoint>& points, Millis today);

/// Sorts the points, moves them by `shift`, rounds their times to seconds, and works out from neighbours on
/// the same segment the speeds and headings that the recording does not give. Adds to `leftOut` how many
/// points it left out.
TrackRecords MakeRecords(std::vector<TrackPoint> points, Millis shift, LeftOut& leftOut);

}  // namespace pallomir::station
