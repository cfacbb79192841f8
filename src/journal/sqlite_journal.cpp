#include "journal/sqlite_journal.h"

#include <limits>
#include <set>
#include <tuple>
#include <utility>

namespace pallomir {
namespace {

constexpr int kVersion = 1;

const std::string kSchema = R"(
  CREATE TABLE IF NOT EXISTS units(id INTEGER PRIMARY KEY, unit TEXT NOT NULL UNIQUE, name TEXT NOT NULL);
  CREATE TABLE IF NOT EXISTS zones(id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE);
  CREATE TABLE IF NOT EXISTS entries(
    id INTEGER PRIMARY KEY, utc INTEGER NOT NULL, unit INTEGER NOT NULL, zone INTEGER NOT NULL,
    entered INTEGER NOT NULL, alert INTEGER NOT NULL, late INTEGER NOT NULL,
    x INTEGER NOT NULL, y INTEGER NOT NULL, acknowledged INTEGER);
  CREATE UNIQUE INDEX IF NOT EXISTS by_what ON entries(unit, zone, utc, entered);
  CREATE INDEX IF NOT EXISTS by_time ON entries(utc);
  CREATE INDEX IF NOT EXISTS by_unit ON entries(unit, utc);
  CREATE INDEX IF NOT EXISTS by_zone ON entries(zone, utc);
  CREATE INDEX IF NOT EXISTS alerts ON entries(utc) WHERE alert = 1;
  CREATE INDEX IF NOT EXISTS open_alerts ON entries(utc) WHERE alert = 1 AND acknowledged IS NULL;
)";

// A stay is reckoned where it is shown, so that what comes to light later counts.
constexpr char kRowColumns[] = R"(
  SELECT id, (SELECT units.unit FROM units WHERE units.id = entries.unit),
    (SELECT units.name FROM units WHERE units.id = entries.unit),
    (SELECT path FROM zones WHERE zones.id = entries.zone),
    utc, entered, alert, late, x, y, acknowledged,
    CASE WHEN entered = 0 THEN
      (SELECT CASE WHEN before.entered = 1 THEN entries.utc - before.utc END FROM entries AS before
       WHERE before.unit = entries.unit AND before.zone = entries.zone AND before.utc <= entries.utc
         AND before.id <> entries.id
       ORDER BY before.utc DESC, before.id DESC LIMIT 1) END
  FROM entries )";

JournalEntry ReadRow(const SqliteStatement& row) {
  JournalEntry entry;
  entry.id = row.Integer(0);
  entry.unitId = row.Text(1);
  entry.unitName = row.Text(2);
  entry.zone = row.Text(3);
  entry.utc = row.Integer(4);
  entry.hasEntered = row.Integer(5) != 0;
  entry.isAlert = row.Integer(6) != 0;
  entry.isLate = row.Integer(7) != 0;
  entry.place = {static_cast<std::int32_t>(row.Integer(8)), static_cast<std::int32_t>(row.Integer(9))};
  if (!row.IsNull(10)) entry.acknowledged = row.Integer(10);
  if (!row.IsNull(11)) entry.stay = row.Integer(11);
  return entry;
}

// Under the first free name; what SQLite has beside the file goes with it.
void PutAside(const std::filesystem::path& file) {
  constexpr int kMostNames = 99;
  std::error_code error;
  for (int number = 1; number <= kMostNames; ++number) {
    const std::string name = file.string() + ".damaged" + std::to_string(number);
    if (std::filesystem::exists(name, error)) continue;
    std::filesystem::rename(file, name, error);
    for (const char* part : {"-wal", "-shm"})
      std::filesystem::rename(file.string() + part, name + part, error);
    return;
  }
}

}  // namespace

std::string SqliteJournal::Open(const std::filesystem::path& file) {
  std::string why = TryOpen(file);
  if (why.empty()) return {};
  if (database_->IsDamaged()) {
    database_.reset();
    PutAside(file);
    const std::string fault = std::exchange(why, TryOpen(file));
    if (why.empty())
      return "The journal " + file.string() + " is damaged (" + fault +
             "). It has been put aside, and a new one is begun.";
  }
  TryOpen(":memory:");
  return "The journal " + file.string() + " can't be kept (" + why +
         "). What happens is noted until the program ends.";
}

std::string SqliteJournal::TryOpen(const std::filesystem::path& file) {
  zones_.clear();
  database_ = std::make_unique<SqliteDatabase>(file.string());
  // What a crash of the system takes away is found again by the next reload.
  const bool isReady =
      database_->IsOpen() &&
      database_->Execute(
          "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA temp_store = MEMORY");
  if (!isReady) return database_->Error();
  {
    auto version = database_->Prepare("PRAGMA user_version");
    if (!version.Step()) return database_->Error();
    if (version.Integer(0) > kVersion) return "a newer version has written it";
  }
  if (!database_->Execute(kSchema + ("PRAGMA user_version = " + std::to_string(kVersion))))
    return database_->Error();
  CountAll();
  return {};
}

void SqliteJournal::CountAll() {
  const auto count = [&](const char* sql) {
    auto statement = database_->Prepare(sql);
    return statement.Step() ? statement.Integer(0) : 0;
  };
  count_ = count("SELECT count(*) FROM entries");
  openAlerts_ = static_cast<std::size_t>(
      count("SELECT count(*) FROM entries WHERE alert = 1 AND acknowledged IS NULL"));
}

void SqliteJournal::Told(bool hasWorked) {
  const std::string why = hasWorked ? "" : database_->Error();
  if (std::exchange(toldFailure_, why) != why && !hasWorked) failed(why);
}

// A unit has the name that it was seen with last.
std::int64_t SqliteJournal::UnitId(const std::string& unit, const std::string& name) {
  database_
      ->Prepare(
          "INSERT INTO units(unit, name) VALUES(?1, ?2) ON CONFLICT(unit) DO UPDATE SET name = ?2 "
          "WHERE name <> ?2")
      .Bind(1, unit)
      .Bind(2, name)
      .Run();
  auto id = database_->Prepare("SELECT id FROM units WHERE unit = ?1");
  return id.Bind(1, unit).Step() ? id.Integer(0) : 0;
}

std::int64_t SqliteJournal::ZoneId(const std::string& zone) {
  const auto [found, isNew] = zones_.try_emplace(zone);
  if (!isNew) return found->second;
  database_->Prepare("INSERT OR IGNORE INTO zones(path) VALUES(?1)").Bind(1, zone).Run();
  auto id = database_->Prepare("SELECT id FROM zones WHERE path = ?1");
  return found->second = id.Bind(1, zone).Step() ? id.Integer(0) : 0;
}

std::vector<JournalEntry> SqliteJournal::Replace(const JournalStretch& stretch,
                                                 std::span<const JournalEntry> entries) {
  if (!database_->Execute("BEGIN IMMEDIATE")) {
    Told(false);
    return {};
  }
  const auto countBefore = count_;
  const auto openBefore = openAlerts_;
  const std::int64_t unit = UnitId(stretch.unitId, stretch.unitName);
  std::vector<JournalEntry> added;
  bool hasWorked = unit != 0 && RemoveOthers(unit, stretch, entries);
  if (hasWorked) {
    added = Insert(unit, entries);
    hasWorked = added.empty() || added.back().id != 0;
  }
  hasWorked = hasWorked && DropOldest() && database_->Execute("COMMIT");
  Told(hasWorked);
  if (hasWorked) return added;
  database_->Execute("ROLLBACK");
  count_ = countBefore;
  openAlerts_ = openBefore;
  zones_.clear();  // some of them may have been new
  return {};
}

// What lies in the stretch and is not among the entries goes.
bool SqliteJournal::RemoveOthers(std::int64_t unit, const JournalStretch& stretch,
                                 std::span<const JournalEntry> entries) {
  using Key = std::tuple<Millis, std::string, bool>;
  std::set<Key> wanted;
  for (const JournalEntry& entry : entries) wanted.emplace(entry.utc, entry.zone, entry.hasEntered);
  auto known = database_->Prepare(
      "SELECT entries.id, utc, path, entered, alert AND acknowledged IS NULL FROM entries "
      "JOIN zones ON zones.id = zone WHERE unit = ?1 AND utc BETWEEN ?2 AND ?3");
  known.Bind(1, unit).Bind(2, stretch.from).Bind(3, stretch.until);
  std::vector<std::int64_t> others;
  std::size_t othersOpen = 0;
  while (known.Step()) {
    const std::string zone = known.Text(2);
    if (wanted.contains({known.Integer(1), zone, known.Integer(3) != 0})) continue;
    if (!stretch.isLookedAt(zone)) continue;
    others.push_back(known.Integer(0));
    othersOpen += known.Integer(4) != 0 ? 1 : 0;
  }
  if (known.HasFailed()) return false;
  auto remove = database_->Prepare("DELETE FROM entries WHERE id = ?1");
  for (const std::int64_t id : others) {
    if (!remove.Bind(1, id).Run()) return false;
  }
  count_ -= std::ssize(others);
  openAlerts_ -= othersOpen;
  return true;
}

// A failure ends the list with an entry without an id.
std::vector<JournalEntry> SqliteJournal::Insert(std::int64_t unit, std::span<const JournalEntry> entries) {
  std::vector<JournalEntry> added;
  auto insert = database_->Prepare(
      "INSERT OR IGNORE INTO entries(utc, unit, zone, entered, alert, late, x, y) "
      "VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
  for (const JournalEntry& entry : entries) {
    const std::int64_t zone = ZoneId(entry.zone);
    insert.Bind(1, entry.utc).Bind(2, unit).Bind(3, zone).Bind(4, entry.hasEntered).Bind(5, entry.isAlert);
    insert.Bind(6, entry.isLate).Bind(7, entry.place.x).Bind(8, entry.place.y);
    const bool hasWorked = zone != 0 && insert.Run();
    if (hasWorked && database_->Changes() == 0) continue;  // known
    added.push_back(entry);
    added.back().id = hasWorked ? database_->LastId() : 0;
    if (!hasWorked) return added;
    ++count_;
    openAlerts_ += entry.isAlert ? 1 : 0;
  }
  return added;
}

bool SqliteJournal::DropOldest() {
  const std::int64_t surplus = count_ - mostEntries_;
  if (surplus <= 0) return true;
  auto open = database_->Prepare(
      "SELECT sum(alert = 1 AND acknowledged IS NULL) FROM "
      "(SELECT alert, acknowledged FROM entries ORDER BY utc, id LIMIT ?1)");
  if (!open.Bind(1, surplus).Step()) return false;
  auto remove = database_->Prepare(
      "DELETE FROM entries WHERE id IN (SELECT id FROM entries ORDER BY utc, id LIMIT ?1)");
  if (!remove.Bind(1, surplus).Run()) return false;
  openAlerts_ -= static_cast<std::size_t>(open.Integer(0));
  count_ -= surplus;
  return true;
}

std::string SqliteJournal::Where(const JournalFilter& filter) const {
  std::string where = " WHERE 1 = 1";
  if (!filter.unitId.empty()) where += " AND unit = (SELECT units.id FROM units WHERE units.unit = ?1)";
  if (!filter.zone.empty()) where += " AND zone = (SELECT zones.id FROM zones WHERE path = ?2)";
  if (filter.alertsOnly) where += " AND alert = 1";
  return where;
}

void SqliteJournal::BindFilter(SqliteStatement& statement, const JournalFilter& filter) const {
  if (!filter.unitId.empty()) statement.Bind(1, filter.unitId);
  if (!filter.zone.empty()) statement.Bind(2, filter.zone);
}

std::size_t SqliteJournal::Count(const JournalFilter& filter) {
  if (filter == JournalFilter{}) return static_cast<std::size_t>(count_);
  auto count = database_->Prepare("SELECT count(*) FROM entries" + Where(filter));
  BindFilter(count, filter);
  const bool hasRow = count.Step();
  Told(!count.HasFailed());
  return hasRow ? static_cast<std::size_t>(count.Integer(0)) : 0;
}

std::vector<JournalEntry> SqliteJournal::Rows(const JournalFilter& filter, std::size_t offset,
                                              std::size_t count) {
  // Rows before the offset are passed on an index alone; only those that are wanted are read.
  auto rows =
      database_->Prepare(kRowColumns + ("WHERE id IN (SELECT id FROM entries" + Where(filter)) +
                         " ORDER BY utc DESC, id DESC LIMIT ?3 OFFSET ?4) ORDER BY utc DESC, id DESC");
  BindFilter(rows, filter);
  rows.Bind(3, static_cast<std::int64_t>(count)).Bind(4, static_cast<std::int64_t>(offset));
  return ReadRows(rows).value_or(std::vector<JournalEntry>());
}

std::optional<std::vector<JournalEntry>> SqliteJournal::RowsBehind(const JournalFilter& filter,
                                                                   const JournalEntry* last,
                                                                   std::size_t count) {
  constexpr Millis kEnd = std::numeric_limits<Millis>::max();
  auto rows = database_->Prepare(kRowColumns + Where(filter) +
                                 " AND (utc, id) < (?4, ?5) ORDER BY utc DESC, id DESC LIMIT ?3");
  BindFilter(rows, filter);
  rows.Bind(3, static_cast<std::int64_t>(count));
  rows.Bind(4, last ? last->utc : kEnd).Bind(5, last ? last->id : kEnd);
  return ReadRows(rows);
}

std::optional<std::vector<JournalEntry>> SqliteJournal::ReadRows(SqliteStatement& rows) {
  std::vector<JournalEntry> read;
  while (rows.Step()) read.push_back(ReadRow(rows));
  Told(!rows.HasFailed());
  return rows.HasFailed() ? std::nullopt : std::optional(std::move(read));
}

std::vector<JournalStore::Unit> SqliteJournal::Units() {
  auto rows = database_->Prepare("SELECT unit, name FROM units ORDER BY name, unit");
  std::vector<Unit> units;
  while (rows.Step()) units.push_back({rows.Text(0), rows.Text(1)});
  return units;
}

std::vector<std::string> SqliteJournal::Zones() {
  auto rows = database_->Prepare("SELECT path FROM zones ORDER BY path");
  std::vector<std::string> zones;
  while (rows.Step()) zones.push_back(rows.Text(0));
  return zones;
}

void SqliteJournal::Acknowledge(std::span<const std::int64_t> ids, Millis utc) {
  bool hasWorked = database_->Execute("BEGIN IMMEDIATE");
  std::int64_t changed = 0;
  auto mark = database_->Prepare(
      "UPDATE entries SET acknowledged = ?1 WHERE id = ?2 AND alert = 1 AND acknowledged IS NULL");
  for (const std::int64_t id : ids) {
    hasWorked = hasWorked && mark.Bind(1, utc).Bind(2, id).Run();
    changed += database_->Changes();
  }
  hasWorked = hasWorked && database_->Execute("COMMIT");
  Told(hasWorked);
  if (hasWorked) {
    openAlerts_ -= static_cast<std::size_t>(changed);
  } else {
    database_->Execute("ROLLBACK");
  }
}

bool SqliteJournal::AcknowledgeSome(const JournalFilter& filter, Millis utc) {
  constexpr std::int64_t kAtOnce = 5000;
  auto mark = database_->Prepare("UPDATE entries SET acknowledged = ?3 WHERE id IN (SELECT id FROM entries" +
                                 Where(filter) + " AND alert = 1 AND acknowledged IS NULL LIMIT ?4)");
  BindFilter(mark, filter);
  const bool hasWorked = mark.Bind(3, utc).Bind(4, kAtOnce).Run();
  Told(hasWorked);
  if (!hasWorked) return false;
  openAlerts_ -= static_cast<std::size_t>(database_->Changes());
  return database_->Changes() == kAtOnce;
}

}  // namespace pallomir
