#include "timeline/time_window.h"

#include <algorithm>
#include <cmath>

namespace pallomir {
namespace {

// Zooming out again and again would leave 64 bits after two dozen times.
Millis Representable(Millis time) {
  static const Millis kFirst = ToMillis({100, 1, 1});
  static const Millis kLast = ToMillis({9999, 12, 31, 23, 59, 59});
  return std::clamp(time, kFirst, kLast);
}

Millis At(const TimeWindow& window, double share) {
  return window.start + std::llround(share * static_cast<double>(window.Length()));
}

}  // namespace

std::optional<TimeWindow> WindowForChoice(StartupChoice choice, Millis nowLocal) {
  const auto oneDayFrom = [](Millis start) { return TimeWindow{start, start + kDay}; };
  switch (choice) {
    case StartupChoice::kSinceMidnight:
      return oneDayFrom(WholeDay(nowLocal));
    case StartupChoice::kSinceThreeAm:
      return oneDayFrom(WholeDay(nowLocal - 3 * kHour) + 3 * kHour);
    case StartupChoice::kLast24Hours:
      return TimeWindow{nowLocal - kDay, nowLocal};
    case StartupChoice::kNothing:
    case StartupChoice::kRecent1000:
      break;
  }
  return std::nullopt;
}

TimeWindow MovedBy(const TimeWindow& window, int periods) {
  const Millis start = Representable(window.start + periods * window.Length());
  return {start, Representable(start + window.Length())};
}

TimeWindow ZoomedIn(const TimeWindow& window) {
  const Millis third = window.Length() / 3;
  return {window.start + third, window.end - third};
}

TimeWindow ZoomedOut(const TimeWindow& window) {
  return {Representable(window.start - window.Length()), Representable(window.end + window.Length())};
}

TimeWindow ZoomedTo(const TimeWindow& window, double from, double to) {
  return {Representable(At(window, from)), Representable(At(window, to))};
}

}  // namespace pallomir
