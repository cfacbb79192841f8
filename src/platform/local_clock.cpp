#include "platform/local_clock.h"

namespace pallomir {

bool LocalClock::TakeSystemZone() {
  using Season = ZoneInfo::Season;
  const auto zone = clock_.Zone();
  if (!zone) return false;
  offsetMinutes_ = zone->bias;
  if (zone->season == Season::kStandard) offsetMinutes_ += zone->standardBias;
  if (zone->season == Season::kDaylight) offsetMinutes_ += zone->daylightBias;
  return true;
}

}  // namespace pallomir
