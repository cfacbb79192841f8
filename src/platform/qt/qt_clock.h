#pragma once

#include <optional>

#include "platform/clock.h"

class QTimeZone;

namespace pallomir {

/// What a zone's rules say at the moment `utc`: minutes, positive west. A zone counts as one with daylight
/// rules while it is in daylight time or changes to it within a year. Nothing for an invalid zone.
std::optional<ZoneInfo> ZoneInfoAt(const QTimeZone& zone, Millis utc);

class QtClock : public Clock {
 public:
  Millis NowUtc() const override;
  double Seconds() const override;
  std::optional<ZoneInfo> Zone() const override;
};

}  // namespace pallomir
