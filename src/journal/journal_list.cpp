#include "journal/journal_list.h"

#include "base/number_format.h"

namespace pallomir {

std::string StayText(Millis stay) {
  if (stay < kMinute) return std::to_string(stay / kSecond) + " s";
  if (stay < kHour) return std::to_string(stay / kMinute) + " min";
  if (stay < kDay)
    return std::to_string(stay / kHour) + " h " + FormatInteger(static_cast<int>(stay % kHour / kMinute), 2) +
           " min";
  return std::to_string(stay / kDay) + " d " + std::to_string(stay % kDay / kHour) + " h";
}

void JournalList::Refresh() {
  pages_.clear();
  count_ = store_.Count(filter_);
}

const JournalEntry* JournalList::At(std::size_t row) {
  const std::size_t page = row / kPage;
  if (pages_.size() > kMostPages) pages_.clear();
  auto found = pages_.find(page);
  if (found == pages_.end()) found = pages_.emplace(page, store_.Rows(filter_, page * kPage, kPage)).first;
  const auto& entries = found->second;
  return row % kPage < entries.size() ? &entries[row % kPage] : nullptr;
}

const char* JournalList::Heading(Column column) {
  constexpr const char* kHeadings[kColumns] = {"Time", "Unit", "Event", "Zone", "Alert", "Stay"};
  return kHeadings[column];
}

std::string JournalList::Text(const JournalEntry& entry, Column column) const {
  switch (column) {
    case kTime:
      return DateTimeText(clock_.ToLocal(entry.utc));
    case kUnit:
      return entry.unitName + (isStale(entry.unitId) ? " (stale)" : "");
    case kEvent:
      return std::string(entry.hasEntered ? "Entered" : "Left") + (entry.isLate ? " (late)" : "");
    case kZone:
      return entry.zone;
    case kAlert:
      if (!entry.isAlert) return {};
      return entry.acknowledged ? "Seen " + DateTimeText(clock_.ToLocal(*entry.acknowledged)) : "Alert";
    case kStay:
      return entry.stay ? StayText(*entry.stay) : std::string();
    case kColumns:
      break;
  }
  return {};
}

std::string JournalList::TextOf(const std::vector<std::size_t>& rows) {
  std::string text;
  const auto add = [&](auto textOf) {
    for (int column = 0; column < kColumns; ++column)
      text += (column > 0 ? "\t" : "") + std::string(textOf(static_cast<Column>(column)));
    text += "\n";
  };
  add(&Heading);
  for (const std::size_t row : rows) {
    const JournalEntry* entry = At(row);
    if (entry) add([&](Column column) { return Text(*entry, column); });
  }
  return text;
}

}  // namespace pallomir
