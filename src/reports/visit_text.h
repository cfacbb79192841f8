#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/local_clock.h"
#include "reports/unit_scan.h"

namespace pallomir {

/// A unit that can be searched for.
struct SearchedUnit {
  std::string id;
  std::string caption;       ///< as menus have it
  std::uint32_t colour = 0;  ///< 0xRRGGBB
};

/// The line of a visit, without its line break: " Unit-3:      11/22/26 03:04:05 PM -- 11/22/26 03:10:00 PM",
/// or with one time where it has no other. `number` is the unit's in the list; times are local.
std::string VisitLine(std::size_t number, const Visit& visit, const LocalClock& clock);

/// How long a visit was, never negative.
Millis DurationOf(const Visit& visit);

/// "2 d 3 h 4 min", leaving out what is zero; seconds alone below a minute.
std::string DurationText(Millis stay);

/// CSV with the headline "unit,entry,exit,records": the unit's ID, times in UTC as "2026-11-22T15:04:05Z".
/// The visits name their units by the place in `units`.
std::string VisitsCsv(std::span<const Visit> visits, std::span<const SearchedUnit> units);

/// The moment of a record's time, UTC, as "2026-11-22T15:04:05Z".
std::string Iso8601(Millis utc);

/// The button's caption while a search runs: how many blocks of 20,000 records are done, in three columns.
std::string SearchingCaption(std::uint64_t records);

/// 1234567 as "1,234,567".
std::string Grouped(std::uint64_t number);

}  // namespace pallomir
