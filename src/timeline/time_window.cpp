#include "timeline/time_window.h"

#include <cmath>

namespace pallomir {
namespace {

std::optional<TimeWindow> IfPossible(const TimeWindow& window) {
  return IsPossibleWindow(window) ? std::optional(window) : std::nullopt;
}

Millis At(const TimeWindow& window, double share) {
  return window.start + std::llround(share * static_cast<double>(window.Length()));
}

}  // namespace

Millis FirstMoment() {
  static const Millis kFirst = ToMillis({100, 1, 1});
  return kFirst;
}

Millis LastMoment() {
  static const Millis kLast = ToMillis({9999, 12, 31, 23, 59, 59});
  return kLast;
}

bool IsPossibleWindow(const TimeWindow& window) {
  const auto isDate = [](Millis time) { return time >= FirstMoment() && time <= LastMoment(); };
  return isDate(window.start) && isDate(window.end);
}

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

std::optional<TimeWindow> MovedBy(const TimeWindow& window, int periods) {
  const Millis start = window.start + periods * window.Length();
  return IfPossible({start, start + window.Length()});
}

TimeWindow ZoomedIn(const TimeWindow& window) {
  const Millis third = window.Length() / 3;
  return {window.start + third, window.end - third};
}

std::optional<TimeWindow> ZoomedOut(const TimeWindow& window) {
  return IfPossible({window.start - window.Length(), window.end + window.Length()});
}

TimeWindow ZoomedTo(const TimeWindow& window, double from, double to) {
  return {At(window, from), At(window, to)};
}

}  // namespace pallomir
