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

// Navigation. Results stay between the years 100 and 9999, which is all that a date can hold; within that any
// result is accepted, also an end before the start.

/// `periods` times its own length later, or earlier where negative.
TimeWindow MovedBy(const TimeWindow& window, int periods);

/// The middle third.
TimeWindow ZoomedIn(const TimeWindow& window);

/// Three times as long about the same middle.
TimeWindow ZoomedOut(const TimeWindow& window);

/// The part from the share `from` to the share `to` of the window, 0 being its start and 1 its end.
TimeWindow ZoomedTo(const TimeWindow& window, double from, double to);

}  // namespace pallomir
