#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "base/civil_time.h"
#include "base/data_point.h"

namespace pallomir {

/// How far a unit's clock, or the server's, may be ahead of ours for a point to count as one of now.
inline constexpr Millis kMostAhead = 5 * kMinute;

/// Up to when the points are there without a gap, so that a lost connection is continued where it broke off
/// and not begun anew. A server sends what it has in the order of time, and of each unit what is later than
/// what it has sent; so a unit that was silent and comes back after a request that began later may have sent
/// more to the server than what arrives: that is a gap.
class Coverage {
 public:
  /// What is asked for again before the last known point: late points of units whose radio was slow.
  static constexpr Millis kOverlap = 10 * kMinute;

  /// The store is empty, or nothing is known of what it lacks.
  void Reset(std::size_t unitCount);

  /// A request is made for the window that begins at `windowStart`. Gives from when on points are asked for:
  /// not earlier than that, and that where `whole`.
  Millis Ask(Millis windowStart, bool whole);

  /// A packet of unit k, from 1; rows ascend in time.
  void Take(std::size_t k, const std::vector<DataPoint>& rows, Millis nowUtc);

  /// There are gaps that what was asked for last can't close.
  bool HasGap() const;

 private:
  struct Unit {
    std::optional<Millis> wholeUntil;  // none: not even the window's start
    std::optional<Millis> gapUntil;    // the newest point behind a gap
  };

  std::vector<Unit> units_;
  std::optional<Millis> sentUntil_;  // of all units, all before that has been sent
  Millis windowStart_ = 0;
  Millis askedFrom_ = 0;
};

}  // namespace pallomir
