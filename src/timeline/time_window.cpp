#include "timeline/time_window.h"

namespace pallomir {

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

}  // namespace pallomir
