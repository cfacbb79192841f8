#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "map/map_view.h"

namespace pallomir {

/// One line of the journal: a unit entered or left a zone.
struct JournalEntry {
  std::int64_t id = 0;  ///< of the store; 0 before it is stored
  std::string unitId;
  std::string unitName;
  std::string zone;  ///< the names on the way to it, "Depot › Loading bay"
  Millis utc = 0;
  bool hasEntered = false;  ///< or left
  bool isAlert = false;
  bool isLate = false;
  WorldPoint place;
  std::optional<Millis> stay;          ///< of one that left: how long after its last entering
  std::optional<Millis> acknowledged;  ///< UTC; alerts only
};

/// Which entries are meant. Empty texts stand for all.
struct JournalFilter {
  std::string unitId = {};
  std::string zone = {};
  bool alertsOnly = false;
  bool operator==(const JournalFilter&) const = default;
};

/// A stretch of a unit's time of which everything is known.
struct JournalStretch {
  std::string unitId;
  std::string unitName;
  Millis from = 0;
  Millis until = 0;  ///< included
  /// The zones that were looked at. Entries of others stay as they are: theirs are gone, what happened is
  /// not.
  std::function<bool(const std::string& zone)> isLookedAt;
};

/// Keeps the journal. Nothing throws: what the store can't do it says in `failed`, once until it works again,
/// and gives nothing.
class JournalStore {
 public:
  virtual ~JournalStore() = default;
  std::function<void(const std::string& why)> failed = [](const std::string&) {};

  /// In this stretch there is what `entries` say, and nothing else. One that is known keeps what was said of
  /// it. Gives the entries that are new, with their ids.
  virtual std::vector<JournalEntry> Replace(const JournalStretch& stretch,
                                            std::span<const JournalEntry> entries) = 0;

  virtual std::size_t Count(const JournalFilter& filter) = 0;
  /// The newest first.
  virtual std::vector<JournalEntry> Rows(const JournalFilter& filter, std::size_t offset,
                                         std::size_t count) = 0;
  /// Those behind this one; from the newest on where it is null. At a cost that does not grow on the way.
  /// Nothing where they can't be read.
  virtual std::optional<std::vector<JournalEntry>> RowsBehind(const JournalFilter& filter,
                                                              const JournalEntry* last,
                                                              std::size_t count) = 0;

  struct Unit {
    std::string id;
    std::string name;
    bool operator==(const Unit&) const = default;
  };
  virtual std::vector<Unit> Units() = 0;         ///< all that are named, by name
  virtual std::vector<std::string> Zones() = 0;  ///< the same

  /// Alerts that nobody has acknowledged.
  virtual std::size_t OpenAlerts() = 0;
  virtual void Acknowledge(std::span<const std::int64_t> ids, Millis utc) = 0;
  /// Some thousands of those that are meant. True while there are more.
  virtual bool AcknowledgeSome(const JournalFilter& filter, Millis utc) = 0;
};

}  // namespace pallomir
