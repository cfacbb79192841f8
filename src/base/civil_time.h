#pragma once

#include <cstdint>
#include <string>

namespace pallomir {

/// A moment on a clock without a zone: milliseconds since 1970-01-01 00:00:00 of that clock. Whether it is
/// UTC or local is said by the name of the variable. Local time here is UTC minus one fixed offset, so every
/// day has 24 hours.
using Millis = std::int64_t;

inline constexpr Millis kSecond = 1000;
inline constexpr Millis kMinute = 60 * kSecond;
inline constexpr Millis kHour = 60 * kMinute;
inline constexpr Millis kDay = 24 * kHour;

/// Between UTC and local time by the offset in minutes, which is positive west of Greenwich.
inline constexpr Millis ToLocalTime(Millis utc, int utcOffsetMinutes) {
  return utc - utcOffsetMinutes * kMinute;
}
inline constexpr Millis ToUtc(Millis local, int utcOffsetMinutes) {
  return local + utcOffsetMinutes * kMinute;
}

/// A calendar date with the time of day, Gregorian throughout. month 1..12, day 1..31, hour 0..23.
struct CivilTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  bool operator==(const CivilTime&) const = default;
};

/// Whether the fields name a second that exists (no 31 April, no hour 24, no second 60).
bool IsPossible(const CivilTime& time);

/// Fields outside their ranges are carried over (day 0 is the last day of the month before).
Millis ToMillis(const CivilTime& time);

/// The second that `time` lies in.
CivilTime ToCivil(Millis time);

/// The midnight at or before `time`.
Millis WholeDay(Millis time);

/// 0 = Sunday .. 6 = Saturday.
int DayOfWeek(Millis time);

/// "2026-11-22 15:04:05": the form of the data request, which both sides read.
std::string IsoText(Millis time);

/// "11/22/26 03:04:05 PM", the date-time text of data points.
std::string DateTimeText(Millis time);

/// "03:04:05 p", the same time of day alone.
std::string TimeOfDayText(Millis time);

}  // namespace pallomir
