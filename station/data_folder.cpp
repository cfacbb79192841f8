#include "station/data_folder.h"

#include <sys/stat.h>

#include <algorithm>

#include "station/data_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// How often a unit's folder may change under a read before the reader comes back another time.
constexpr int kAttempts = 10;

// A folder full of foreign files must not fill the log each time that it changes.
constexpr std::size_t kProblemsLogged = 10;

std::vector<fs::path> FilesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    if (std::error_code ignored; entry->is_regular_file(ignored)) files.push_back(entry->path());
  return files;
}

// The records of the window; nothing when a file is not what the index says.
std::optional<std::vector<WireRecord>> ReadIndexed(const DataFileIndex& index, PackedWindow window,
                                                   std::size_t limit) {
  std::vector<WireRecord> found;
  auto file = std::ranges::lower_bound(index.files, window.first, {}, &DataFileEntry::last);
  for (; file != index.files.end() && file->first <= window.last && found.size() < limit; ++file) {
    const DataFileContent content = ReadDataFile(file->path);
    if (content.records.size() != file->count || content.records.front().time != file->first ||
        content.records.back().time != file->last)
      return std::nullopt;
    const auto inside = RecordsInside(content.records, window);
    const std::size_t taken = std::min(limit - found.size(), inside.size());
    found.insert(found.end(), inside.begin(), inside.begin() + static_cast<std::ptrdiff_t>(taken));
  }
  return found;
}

}  // namespace

DataFileIndex IndexUnitFolder(const fs::path& folder) {
  DataFileIndex index;
  for (const fs::path& file : FilesOf(folder)) {
    const DataFileContent content = ReadDataFile(file);
    if (!content.problem.empty()) index.problems.push_back(file.string() + " " + content.problem);
    if (content.records.empty()) continue;
    index.files.push_back(
        {file, content.records.front().time, content.records.back().time, content.records.size()});
  }
  std::ranges::sort(index.files, [](const DataFileEntry& a, const DataFileEntry& b) {
    return std::tie(a.first, a.path) < std::tie(b.first, b.path);
  });
  std::uint32_t latest = 0;
  std::erase_if(index.files, [&](const DataFileEntry& file) {
    if (file.first > latest) {
      latest = file.last;
      return false;
    }
    index.problems.push_back(file.path.string() + " overlaps an earlier file");
    return true;
  });
  return index;
}

bool DataFolder::Knows(std::string_view unitId) {
  std::error_code error;
  return IsUnitId(unitId) && fs::is_directory(folder_ / unitId, error);
}

std::vector<std::string> DataFolder::Units() const {
  std::vector<std::string> ids;
  std::error_code error;
  for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (std::error_code ignored; IsUnitId(name) && entry->is_directory(ignored))
      ids.push_back(std::move(name));
  }
  std::ranges::sort(ids);
  return ids;
}

std::optional<DataFolder::Stamp> DataFolder::StampOf(const fs::path& folder) {
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return Stamp{status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

const DataFileIndex* DataFolder::IndexOf(std::string_view unitId) {
  const fs::path folder = folder_ / unitId;
  const auto stamp = IsUnitId(unitId) ? StampOf(folder) : std::nullopt;
  if (!stamp) {
    Forget(unitId);
    return nullptr;
  }
  Unit& unit = units_[std::string(unitId)];
  if (unit.stamp == *stamp) return &unit.index;
  unit = {*stamp, IndexUnitFolder(folder)};
  const auto& problems = unit.index.problems;
  for (std::size_t i = 0; i < std::min(problems.size(), kProblemsLogged); ++i)
    log_("data folder: " + problems[i]);
  if (problems.size() > kProblemsLogged)
    log_("data folder: and " + std::to_string(problems.size() - kProblemsLogged) + " more in " +
         folder.string());
  return &unit.index;
}

void DataFolder::Forget(std::string_view unitId) {
  if (const auto unit = units_.find(unitId); unit != units_.end()) units_.erase(unit);
}

std::vector<WireRecord> DataFolder::Read(std::string_view unitId, TimeWindow window, std::size_t limit) {
  const auto packed = PackWindow(window);
  if (!packed) return {};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const DataFileIndex* index = IndexOf(unitId);
    if (index == nullptr) return {};
    auto records = ReadIndexed(*index, *packed, limit);
    // An import may have put another folder in this one's place while it was listed or read.
    if (records && StampOf(folder_ / unitId) == units_.find(unitId)->second.stamp) return *std::move(records);
    Forget(unitId);
  }
  return {};
}

}  // namespace pallomir::station
