#include "base/civil_time.h"

#include <chrono>
#include <cstdio>

namespace pallomir {
namespace {

constexpr Millis FloorTo(Millis value, Millis step) {
  const Millis rest = value % step;
  return value - (rest < 0 ? rest + step : rest);
}

int HourOfTwelve(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

}  // namespace

bool IsPossible(const CivilTime& time) {
  using namespace std::chrono;
  const year_month_day date{year{time.year}, month{static_cast<unsigned>(time.month)},
                            day{static_cast<unsigned>(time.day)}};
  return time.month >= 1 && time.day >= 1 && date.ok() && time.hour >= 0 && time.hour < 24 &&
         time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60;
}

Millis ToMillis(const CivilTime& time) {
  using namespace std::chrono;
  const int monthsSinceYearZero = time.year * 12 + (time.month - 1);
  const int yearNumber = (monthsSinceYearZero >= 0 ? monthsSinceYearZero : monthsSinceYearZero - 11) / 12;
  const auto monthNumber = static_cast<unsigned>(monthsSinceYearZero - yearNumber * 12 + 1);
  const sys_days first{year{yearNumber} / month{monthNumber} / day{1}};
  const Millis days = first.time_since_epoch().count() + (time.day - 1);
  return days * kDay + time.hour * kHour + time.minute * kMinute + time.second * kSecond;
}

CivilTime ToCivil(Millis time) {
  using namespace std::chrono;
  const Millis midnight = WholeDay(time);
  const year_month_day date{sys_days{days{static_cast<int>(midnight / kDay)}}};
  const auto seconds = static_cast<int>((time - midnight) / kSecond);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          seconds / 3600,
          seconds / 60 % 60,
          seconds % 60};
}

Millis WholeDay(Millis time) { return FloorTo(time, kDay); }

int DayOfWeek(Millis time) {
  const Millis sinceSunday = WholeDay(time) / kDay + 4;  // 1970-01-01 was a Thursday
  return static_cast<int>((sinceSunday % 7 + 7) % 7);
}

std::string IsoText(Millis time) {
  const CivilTime t = ToCivil(time);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute,
                t.second);
  return text;
}

std::string DateTimeText(Millis time) {
  const CivilTime t = ToCivil(time);
  char text[64];
  std::snprintf(text, sizeof text, "%02d/%02d/%02d %02d:%02d:%02d %s", t.month, t.day, t.year % 100,
                HourOfTwelve(t.hour), t.minute, t.second, t.hour < 12 ? "AM" : "PM");
  return text;
}

std::string TimeOfDayText(Millis time) {
  const CivilTime t = ToCivil(time);
  char text[64];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d %s", HourOfTwelve(t.hour), t.minute, t.second,
                t.hour < 12 ? "a" : "p");
  return text;
}

}  // namespace pallomir
