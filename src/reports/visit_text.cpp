#include "reports/visit_text.h"

#include <algorithm>

#include "reports/record_time.h"
#include "reports/visit_search.h"

namespace pallomir {

std::string VisitLine(std::size_t number, const Visit& visit, const LocalClock& clock) {
  const auto text = [&](std::uint32_t packed) { return DateTimeText(clock.ToLocal(MomentOf(packed))); };
  std::string line = " Unit-" + std::to_string(number) + ":      " + text(visit.entry);
  if (visit.exit != visit.entry) line += " -- " + text(visit.exit);
  return line;
}

Millis DurationOf(const Visit& visit) {
  return std::max<Millis>(0, MomentOf(visit.exit) - MomentOf(visit.entry));
}

std::string DurationText(Millis stay) {
  if (stay < kMinute) return std::to_string(stay / kSecond) + " s";
  std::string text;
  const auto add = [&](Millis count, const char* unit) {
    if (count > 0) text += (text.empty() ? "" : " ") + std::to_string(count) + unit;
  };
  add(stay / kDay, " d");
  add(stay % kDay / kHour, " h");
  add(stay % kHour / kMinute, " min");
  return text;
}

std::string Iso8601(Millis utc) {
  std::string text = IsoText(utc) + "Z";
  std::ranges::replace(text, ' ', 'T');
  return text;
}

std::string VisitsCsv(std::span<const Visit> visits, std::span<const SearchedUnit> units) {
  std::string text = "unit,entry,exit,records\n";
  for (const Visit& visit : visits)
    text += units[visit.unit].id + "," + Iso8601(MomentOf(visit.entry)) + "," +
            Iso8601(MomentOf(visit.exit)) + "," + std::to_string(visit.records) + "\n";
  return text;
}

std::string SearchingCaption(std::uint64_t records) {
  constexpr std::size_t kColumns = 3;
  const std::string blocks = std::to_string(records / VisitSearch::kRecordsPerBlock);
  return "  Searching...   " + std::string(kColumns - std::min(kColumns, blocks.size()), ' ') + blocks;
}

std::string Grouped(std::uint64_t number) {
  const std::string digits = std::to_string(number);
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

}  // namespace pallomir
