#pragma once

#include "base/packed_time.h"

namespace pallomir {

/// Packed times, both included; none if `last` is before `first`. All times as it is made.
struct TimeSpan {
  std::uint32_t first = 0;
  std::uint32_t last = ~kPackedTimeFlag;
  bool operator==(const TimeSpan&) const = default;
};

/// The whole seconds from `from` to `until`, both included, UTC, within the years 2000 to 2031 that packed
/// times can hold.
TimeSpan SpanOf(Millis from, Millis until);

/// The UTC moment of a record's time, whatever its fields say: what they have too much is carried over.
Millis MomentOf(std::uint32_t packed);

}  // namespace pallomir
