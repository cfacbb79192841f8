#pragma once

#include <optional>

#include "base/civil_time.h"

namespace pallomir {

/// The time window: plain local times. Nothing checks that the start lies before the end.
struct TimeWindow {
  Millis start = 0;
  Millis end = 0;
  Millis Length() const { return end - start; }
  bool operator==(const TimeWindow&) const = default;
};

/// The entries of the On Startup menu, by index.
enum class StartupChoice {
  kNothing = 0,
  kSinceMidnight = 1,
  kSinceThreeAm = 2,
  kLast24Hours = 3,
  kRecent1000 = 4
};

/// The window that the choice sets; nothing where it leaves the pickers as they are.
std::optional<TimeWindow> WindowForChoice(StartupChoice choice, Millis nowLocal);

}  // namespace pallomir
