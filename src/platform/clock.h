#pragma once

#include <optional>

#include "base/civil_time.h"

namespace pallomir {

/// What the system says of its time zone. Biases in minutes, positive west of Greenwich.
struct ZoneInfo {
  enum class Season { kNoDaylightRules, kStandard, kDaylight };
  int bias = 0;
  int standardBias = 0;  ///< added while standard time is in force
  int daylightBias = 0;  ///< added while daylight time is in force
  Season season = Season::kNoDaylightRules;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual Millis NowUtc() const = 0;
  /// Seconds of a clock that only goes forward; for the trace.
  virtual double Seconds() const = 0;
  /// Nothing when the system can't say.
  virtual std::optional<ZoneInfo> Zone() const = 0;
};

}  // namespace pallomir
