#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "journal/journal_store.h"
#include "platform/local_clock.h"

namespace pallomir {

/// The journal as its window shows it: the newest entry first, read in pages when they are looked at.
class JournalList {
 public:
  enum Column { kTime, kUnit, kEvent, kZone, kAlert, kStay, kColumns };

  /// Both outlive the list.
  JournalList(JournalStore& store, const LocalClock& clock) : store_(store), clock_(clock) {}

  /// Whether a unit has sent nothing for too long.
  std::function<bool(const std::string& unitId)> isStale = [](const std::string&) { return false; };

  /// What was read is read anew.
  void Refresh();
  const JournalFilter& Filter() const { return filter_; }
  void SetFilter(const JournalFilter& filter) { filter_ = filter; }  ///< counts from the next Refresh on
  std::vector<JournalStore::Unit> Units() { return store_.Units(); }
  std::vector<std::string> Zones() { return store_.Zones(); }
  std::size_t OpenAlerts() { return store_.OpenAlerts(); }

  std::size_t Count() const { return count_; }
  /// Of a row from 0; null where the journal has become shorter meanwhile. Valid until the next call.
  const JournalEntry* At(std::size_t row);

  static const char* Heading(Column column);
  std::string Text(const JournalEntry& entry, Column column) const;
  /// Headings and entries, a line each, columns apart by tabs.
  std::string TextOf(const std::vector<std::size_t>& rows);

 private:
  static constexpr std::size_t kPage = 200;
  static constexpr std::size_t kMostPages = 50;

  JournalStore& store_;
  const LocalClock& clock_;
  JournalFilter filter_;
  std::size_t count_ = 0;
  std::map<std::size_t, std::vector<JournalEntry>> pages_;
};

/// "45 s", "12 min", "3 h 05 min", "2 d 4 h".
std::string StayText(Millis stay);

}  // namespace pallomir
