#include "station/store/data_folder.h"

#include <sys/stat.h>

#include <algorithm>
#include <cassert>

#include "station/store/data_files.h"
#include "station/store/data_writer.h"
#include "station/store/demo_records.h"
#include "station/store/unit_descriptions.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

std::optional<FileStamp> StampOfFolder(const fs::path& folder) {
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return StampOf(status);
}

// How often a read is tried while the unit's folder changes under it.
constexpr int kAttempts = 10;

// At each update, so that a folder full of foreign files does not fill the log.
constexpr std::size_t kProblemsLogged = 10;

// How long a file that can't be read holds up the unit's other files.
constexpr seconds kUnreadPatience{10};

// How often an index is updated though its folder has not changed. Less often where there are so many files
// that it would take more than a twentieth of the time.
constexpr seconds kBetweenUpdates{1};
constexpr int kUpdatesShare = 20;

struct Reading {
  std::vector<WireRecord> records;
  std::optional<fs::path> doubtful;  ///< the file where reading ended, because it is not what the index says
};

// Records that were appended since the file was indexed wait for the next update.
bool IsAsIndexed(const std::vector<WireRecord>& records, const DataFileEntry& file) {
  return records.size() >= file.count && records.front().time == file.first &&
         records[file.count - 1].time == file.last;
}

Reading ReadIndexed(const DataFileIndex& index, PackedWindow window, std::size_t limit) {
  Reading reading;
  auto& found = reading.records;
  auto file = std::ranges::lower_bound(index.files, window.first, {}, &DataFileEntry::last);
  for (; file != index.files.end() && file->first <= window.last && found.size() < limit; ++file) {
    const DataFileContent content = ReadDataFile(file->path);
    if (!IsAsIndexed(content.records, *file)) {
      reading.doubtful = file->path;
      break;
    }
    const auto inside = RecordsInside(std::span(content.records).first(file->count), window);
    const std::size_t taken = std::min(limit - found.size(), inside.size());
    found.insert(found.end(), inside.begin(), inside.begin() + static_cast<std::ptrdiff_t>(taken));
  }
  return reading;
}

class DataFolderWriter : public StoreWriter {
 public:
  DataFolderWriter(const fs::path& folder, std::chrono::milliseconds patience) : lock_(folder, patience) {}

  const std::string& Problem() const { return lock_.Problem(); }

  MergeOutcome Merge(std::string_view unitId, std::span<const WireRecord> records) override {
    return MergeIntoUnit(lock_, unitId, records);
  }
  std::string KeepDemo(std::string_view unitId, PackedWindow window, std::span<const WireRecord> records,
                       std::uint32_t oldest) override {
    return KeepDemoRecords(lock_, unitId, window, records, oldest);
  }
  std::optional<std::string> Description(std::string_view unitId, std::string& problem) const override {
    UnitDescriptions all = ReadDescriptions(lock_.DataFolder(), problem);
    const auto found = all.find(unitId);
    return found == all.end() ? std::nullopt : std::optional(std::move(found->second));
  }
  std::string SetDescription(std::string_view unitId, std::string_view description) override {
    assert(CleanDescription(description) == description);
    return WriteDescription(lock_, unitId, description);
  }

 private:
  ImportLock lock_;
};

}  // namespace

bool DataFolder::Knows(std::string_view unitId) {
  std::error_code error;
  return IsUnitId(unitId) && fs::is_directory(folder_ / unitId, error) && !IsDemoFolder(folder_ / unitId);
}

std::vector<std::string> DataFolder::UnitsToSearch(std::string& problem) const {
  std::vector<std::string> units;
  std::error_code error;
  for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (std::error_code ignored; IsUnitId(name) && entry->is_directory(ignored))
      units.push_back(std::move(name));
  }
  if (error && error != std::errc::no_such_file_or_directory)
    problem = folder_.string() + " can't be listed: " + error.message();
  std::ranges::sort(units);
  return units;
}

std::vector<StoredUnit> DataFolder::Units(std::string& problem) {
  std::vector<StoredUnit> units;
  for (std::string& id : UnitsToSearch(problem))
    if (!IsDemoFolder(folder_ / id)) units.push_back({std::move(id), ""});
  UnitDescriptions descriptions = ReadDescriptions(folder_, problem);
  for (StoredUnit& unit : units)
    if (const auto found = descriptions.find(unit.id); found != descriptions.end())
      unit.description = std::move(found->second);
  return units;
}

std::unique_ptr<StoreWriter> DataFolder::StartWriting(std::chrono::milliseconds patience,
                                                      std::string& problem) {
  auto writer = std::make_unique<DataFolderWriter>(folder_, patience);
  if (writer->Problem().empty()) return writer;
  problem = writer->Problem();
  return nullptr;
}

std::unique_ptr<VisitSearch> DataFolder::SearchVisits(VisitQuery query) const {
  return std::make_unique<VisitSearch>(folder_, std::move(query));
}

// The unit with its index up to date, or null if there is no such unit.
DataFolder::Unit* DataFolder::UpToDateUnit(std::string_view unitId) {
  const fs::path folder = folder_ / unitId;
  const auto stamp = IsUnitId(unitId) ? StampOfFolder(folder) : std::nullopt;
  auto unit = units_.find(unitId);
  if (!stamp) {
    if (unit != units_.end()) units_.erase(unit);
    return nullptr;
  }
  const bool isNew = unit == units_.end();
  if (isNew) unit = units_.emplace(unitId, Unit{UnitIndex(folder), {}, {}, {}, {}}).first;
  if (isNew || unit->second.stamp != *stamp || unit->second.nextUpdate <= clock_()) {
    unit->second.stamp = *stamp;
    Update(unit->second);
  }
  return &unit->second;
}

void DataFolder::Update(Unit& unit) {
  const Time start = clock_();
  unit.index.Update();
  const Time end = clock_();
  unit.nextUpdate = end + std::max<Time::duration>(kBetweenUpdates, (end - start) * kUpdatesShare);
  LogNewProblems(unit);
}

// Those that the update before did not have.
void DataFolder::LogNewProblems(Unit& unit) {
  const DataFileIndex& files = unit.index.Files();
  std::set<std::string> problems(files.problems.begin(), files.problems.end());
  problems.insert(files.unread.begin(), files.unread.end());
  std::size_t fresh = 0;
  for (const std::string& problem : problems)
    if (!unit.problems.contains(problem) && ++fresh <= kProblemsLogged) log_("data folder: " + problem);
  if (fresh > kProblemsLogged)
    log_("data folder: and " + std::to_string(fresh - kProblemsLogged) + " more in " +
         unit.index.Folder().string());
  unit.problems = std::move(problems);
}

bool DataFolder::MustWait(Unit& unit) const {
  const DataFileIndex& files = unit.index.Files();
  if (files.unread.empty()) {
    unit.unreadSince.reset();
    return false;
  }
  const Time now = clock_();
  if (!unit.unreadSince) unit.unreadSince = now;
  return files.hasShortage || now - *unit.unreadSince < kUnreadPatience;
}

std::vector<WireRecord> DataFolder::Read(std::string_view unitId, TimeWindow window, std::size_t limit) {
  const auto packed = PackWindow(window);
  if (!packed) return {};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    Unit* unit = UpToDateUnit(unitId);
    if (unit == nullptr || MustWait(*unit)) return {};
    Reading reading = ReadIndexed(unit->index.Files(), *packed, limit);
    // An import may have put another folder in this one's place while it was listed or read.
    const bool isSameFolder = StampOfFolder(unit->index.Folder()) == unit->stamp;
    if (isSameFolder && !reading.doubtful) {
      assert(reading.records.size() <= limit);
      assert(IsStrictlyAscending(reading.records));
      return std::move(reading.records);
    }
    if (reading.doubtful) unit->index.Doubt(*reading.doubtful);
    unit->nextUpdate = {};
  }
  return {};
}

}  // namespace pallomir::station
