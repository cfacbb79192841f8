#include "reports/visit_calendar.h"

#include <algorithm>
#include <functional>
#include <map>

#include "reports/record_time.h"

namespace pallomir {
namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr std::size_t kMostInSentence = 6;

}  // namespace

std::vector<VisitDay> DaysOfVisits(std::span<const Visit> visits, const LocalClock& clock) {
  std::map<Millis, std::vector<DayStay>, std::greater<>> days;
  for (std::size_t i = 0; i < visits.size(); ++i) {
    const Millis entry = clock.ToLocal(MomentOf(visits[i].entry));
    const Millis exit = std::max(entry, clock.ToLocal(MomentOf(visits[i].exit)));
    // From the last day back: of a stay of years only the days that are kept are looked at.
    for (Millis day = WholeDay(exit); day >= WholeDay(entry); day -= kDay) {
      if (days.size() == kMostVisitDays && day < days.rbegin()->first) break;
      const auto minute = [day](Millis time) {
        return static_cast<int>(std::clamp<Millis>((time - day) / kMinute, 0, kMinutesOfDay));
      };
      days[day].push_back({i, visits[i].unit, minute(std::max(entry, day)), minute(exit)});
      if (days.size() > kMostVisitDays) days.erase(std::prev(days.end()));
    }
  }
  std::vector<VisitDay> found;
  for (auto& [day, stays] : days) found.push_back({day, std::move(stays)});
  return found;
}

std::string DayText(Millis day) {
  constexpr const char* kNames[] = {"Sun ", "Mon ", "Tue ", "Wed ", "Thu ", "Fri ", "Sat "};
  return kNames[DayOfWeek(day)] + DateTimeText(day).substr(0, 8);
}

std::string MinuteText(int minute) {
  if (minute == kMinutesOfDay) return "midnight";
  const int hour = minute / 60 % 12 == 0 ? 12 : minute / 60 % 12;
  const std::string minutes = std::to_string(minute % 60);
  return std::to_string(hour) + ":" + (minutes.size() < 2 ? "0" : "") + minutes +
         (minute < kMinutesOfDay / 2 ? " AM" : " PM");
}

std::string SentenceOf(const VisitDay& day, std::span<const SearchedUnit> units) {
  std::string text = DayText(day.day) + ": ";
  for (std::size_t i = 0; i < day.stays.size(); ++i) {
    if (i > 0) text += "; ";
    if (i == kMostInSentence) return text + "and " + std::to_string(day.stays.size() - i) + " more";
    const DayStay& stay = day.stays[i];
    text += units[stay.unit].caption + " " + MinuteText(stay.from);
    if (stay.to > stay.from) text += " to " + MinuteText(stay.to);
  }
  return text;
}

}  // namespace pallomir
