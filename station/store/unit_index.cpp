#include "station/store/unit_index.h"

#include <sys/stat.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <system_error>
#include <tuple>

#include "station/store/data_files.h"
#include "station/store/demo_records.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// It passes by itself and says nothing about the file.
bool IsShortage(std::error_code error) {
  return error == std::errc::too_many_files_open || error == std::errc::too_many_files_open_in_system ||
         error == std::errc::not_enough_memory;
}

// The file has gone since it was listed, or is a link that leads nowhere.
bool IsGone(std::error_code error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
         error == std::errc::too_many_symbolic_link_levels;
}

}  // namespace

void UnitIndex::Update() {
  files_ = {};
  std::map<fs::path, KnownFile> found;
  std::error_code error;
  fs::directory_iterator entry(folder_, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error))
    UpdateFile(entry->path(), found);
  if (error && !IsGone(error)) AddUnread(folder_, "can't be listed: " + error.message(), error);
  known_ = std::move(found);
  Arrange();
}

void UnitIndex::UpdateFile(const fs::path& file, std::map<fs::path, KnownFile>& found) {
  if (IsDemoFileName(file.filename().native())) return;
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) {
    const std::error_code error(errno, std::generic_category());
    return IsGone(error) ? void() : AddUnread(file, "can't be looked at: " + error.message(), error);
  }
  if (!S_ISREG(status.st_mode)) return;
  const FileStamp stamp = StampOf(status);
  if (const auto known = known_.find(file); known != known_.end() && known->second.stamp == stamp) {
    found.insert(known_.extract(known));
    return;
  }
  const DataFileContent content = ReadDataFile(file);
  if (IsGone(content.unread)) return;
  if (content.unread) return AddUnread(file, content.problem, content.unread);
  KnownFile read{stamp, {file, 0, 0, content.records.size()}, content.problem};
  if (!content.records.empty()) {
    read.entry.first = content.records.front().time;
    read.entry.last = content.records.back().time;
  }
  found.emplace(file, std::move(read));
}

void UnitIndex::AddUnread(const fs::path& path, const std::string& problem, std::error_code error) {
  files_.unread.push_back(path.string() + " " + problem);
  files_.hasShortage |= IsShortage(error);
}

void UnitIndex::Arrange() {
  for (const auto& [path, file] : known_) {
    if (!file.problem.empty()) files_.problems.push_back(path.string() + " " + file.problem);
    if (file.entry.count > 0) files_.files.push_back(file.entry);
  }
  std::ranges::sort(files_.files, [](const DataFileEntry& a, const DataFileEntry& b) {
    return std::tie(a.first, a.path) < std::tie(b.first, b.path);
  });
  std::uint32_t latest = 0;
  std::erase_if(files_.files, [&](const DataFileEntry& file) {
    if (file.first > latest) {
      latest = file.last;
      return false;
    }
    files_.problems.push_back(file.path.string() + " overlaps an earlier file");
    return true;
  });
  assert(std::ranges::all_of(files_.files, [](const auto& file) { return file.first <= file.last; }));
  assert(std::ranges::adjacent_find(files_.files, [](const auto& a, const auto& b) {
           return a.last >= b.first;
         }) == files_.files.end());
}

DataFileIndex IndexUnitFolder(const fs::path& folder) {
  UnitIndex index(folder);
  index.Update();
  return index.Files();
}

}  // namespace pallomir::station
