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

/// The years 100 to 9999 are all that a date can hold: pickers, navigation and strips end there alike.
Millis FirstMoment();
Millis LastMoment();  ///< the last second; nothing lies between it and the year 10000

/// Whether both ends are moments that a date can hold.
bool IsPossibleWindow(const TimeWindow& window);

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

// Navigation. Any result is accepted that is possible, also an end before the start; where there is none, the
// window can't go further that way.

/// `periods` times its own length later, or earlier where negative.
std::optional<TimeWindow> MovedBy(const TimeWindow& window, int periods);

/// The middle third.
TimeWindow ZoomedIn(const TimeWindow& window);

/// Three times as long about the same middle.
std::optional<TimeWindow> ZoomedOut(const TimeWindow& window);

/// The part from the share `from` to the share `to` of the window, 0 being its start and 1 its end.
TimeWindow ZoomedTo(const TimeWindow& window, double from, double to);

}  // namespace pallomir
