#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/local_clock.h"
#include "reports/visit_text.h"

namespace pallomir {

/// A part of a visit within a day: minutes from midnight, 0 to 1440, local.
struct DayStay {
  std::size_t visit = 0;  ///< its place among those given
  std::size_t unit = 0;   ///< as the visit names it
  int from = 0;
  int to = 0;  ///< at least `from`
  bool operator==(const DayStay&) const = default;
};

struct VisitDay {
  Millis day = 0;  ///< its midnight, local
  std::vector<DayStay> stays;
};

inline constexpr std::size_t kMostVisitDays = 400;

/// The days that hold visits, the newest first, of them the newest kMostVisitDays. The visits come newest
/// exit first, as a search lists them.
std::vector<VisitDay> DaysOfVisits(std::span<const Visit> visits, const LocalClock& clock);

/// "Sun 11/22/26", "3:05 PM".
std::string DayText(Millis day);
std::string MinuteText(int minute);

/// A day as a sentence: "Sun 11/22/26: 0123456789AB - Van 11:50 PM to midnight".
std::string SentenceOf(const VisitDay& day, std::span<const SearchedUnit> units);

}  // namespace pallomir
