#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "journal/journal_store.h"
#include "journal/sqlite_database.h"

namespace pallomir {

/// The journal in a file of SQLite.
class SqliteJournal final : public JournalStore {
 public:
  /// Beyond that many the oldest entries go.
  static constexpr std::int64_t kMostEntries = 10'000'000;

  explicit SqliteJournal(std::int64_t mostEntries = kMostEntries) : mostEntries_(mostEntries) {}

  /// Opens or makes the file. One that is damaged is put aside as "<file>.damaged1" and begun anew; where
  /// none can be kept, the journal lasts for this run. Gives what the user must know of that, or nothing.
  std::string Open(const std::filesystem::path& file);

  std::vector<JournalEntry> Replace(const JournalStretch& stretch,
                                    std::span<const JournalEntry> entries) override;
  std::size_t Count(const JournalFilter& filter) override;
  std::vector<JournalEntry> Rows(const JournalFilter& filter, std::size_t offset, std::size_t count) override;
  std::optional<std::vector<JournalEntry>> RowsBehind(const JournalFilter& filter, const JournalEntry* last,
                                                      std::size_t count) override;
  std::vector<Unit> Units() override;
  std::vector<std::string> Zones() override;
  std::size_t OpenAlerts() override { return openAlerts_; }
  void Acknowledge(std::span<const std::int64_t> ids, Millis utc) override;
  bool AcknowledgeSome(const JournalFilter& filter, Millis utc) override;

 private:
  /// Why it is not open, or nothing.
  std::string TryOpen(const std::filesystem::path& file);
  void CountAll();
  std::int64_t UnitId(const std::string& unit, const std::string& name);
  std::int64_t ZoneId(const std::string& zone);
  bool RemoveOthers(std::int64_t unit, const JournalStretch& stretch, std::span<const JournalEntry> entries);
  std::vector<JournalEntry> Insert(std::int64_t unit, std::span<const JournalEntry> entries);
  bool DropOldest();
  std::optional<std::vector<JournalEntry>> ReadRows(SqliteStatement& rows);
  void Told(bool hasWorked);
  std::string Where(const JournalFilter& filter) const;
  void BindFilter(SqliteStatement& statement, const JournalFilter& filter) const;

  std::int64_t mostEntries_;
  std::unique_ptr<SqliteDatabase> database_;
  std::map<std::string, std::int64_t> zones_;
  std::int64_t count_ = 0;
  std::size_t openAlerts_ = 0;
  std::string toldFailure_;
};

}  // namespace pallomir
