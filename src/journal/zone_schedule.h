#pragma once

#include <array>

#include "base/civil_time.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// The days and hours in which a zone alerts.
///
/// Hours run from the start up to, not including, the end; an end at or before the start is that of the next
/// day. Hours past midnight belong to the day on which they began. Times that name no entry of the options
/// dialog's lists count as any time.
class ZoneSchedule {
 public:
  explicit ZoneSchedule(const ZoneOptions& options);

  bool Includes(Millis local) const;

 private:
  std::array<bool, 7> days_{};  // Sunday first
  Millis start_ = 0;            // since midnight
  Millis end_ = kDay;           // may lie in the next day
};

}  // namespace pallomir
