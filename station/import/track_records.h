#pragma once

#include <vector>

#include "station/import/recording.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// Records made of recorded points, ready for the data files.
struct TrackRecords {
  std::vector<WireRecord> records;  ///< strictly ascending in time
  std::size_t outOfOrder = 0;       ///< points that came later in the recording than in time
};

/// Whole days to add so that the last day of the points (UTC, the years 2000 to 2031 alone counted) becomes
/// `today`, the midnight of a date. None without points.
Millis ShiftToDay(const std::vector<TrackPoint>& points, Millis today);

/// Sorts the points, moves them by `shift`, and works out speed and heading from the neighbours on the same
/// segment where the recording does not give them. Counts in `leftOut` what it can't take.
TrackRecords MakeRecords(std::vector<TrackPoint> points, Millis shift, LeftOut& leftOut);

}  // namespace pallomir::station
