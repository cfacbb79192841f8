#include "station/store/unit_index.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <tuple>

#include "station/store/data_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// Goes by itself and says nothing about the file.
bool IsShortage(std::error_code error) {
  return error == std::errc::too_many_files_open || error == std::errc::too_many_files_open_in_system ||
         error == std::errc::not_enough_memory;
}

// A file that has gone since it was listed, or a link that leads nowhere.
bool IsGone(std::error_code error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
         error == std::errc::too_many_symbolic_link_levels;
}

}  // namespace

void UnitIndex::Look() {
  files_ = {};
  std::map<fs::path, KnownFile> found;
  std::error_code error;
  fs::directory_iterator entry(folder_, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) LookAt(entry->path(), found);
  if (error && !IsGone(error)) Unread(folder_, "can't be listed: " + error.message(), error);
  known_ = std::move(found);
  Arrange();
}

void UnitIndex::LookAt(const fs::path& file, std::map<fs::path, KnownFile>& found) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) {
    const std::error_code error(errno, std::generic_category());
    return IsGone(error) ? void() : Unread(file, "can't be looked at: " + error.message(), error);
  }
  if (!S_ISREG(status.st_mode)) return;
  const Stamp stamp{status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  if (const auto known = known_.find(file); known != known_.end() && known->second.stamp == stamp) {
    found.insert(known_.extract(known));
    return;
  }
  const DataFileContent content = ReadDataFile(file);
  if (IsGone(content.unread)) return;
  if (content.unread) return Unread(file, content.problem, content.unread);
  KnownFile read{stamp, {file, 0, 0, content.records.size()}, content.problem};
  if (!content.records.empty()) {
    read.entry.first = content.records.front().time;
    read.entry.last = content.records.back().time;
  }
  found.emplace(file, std::move(read));
}

void UnitIndex::Unread(const fs::path& path, const std::string& problem, std::error_code error) {
  files_.unread.push_back(path.string() + " " + problem);
  files_.isShort |= IsShortage(error);
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
}

DataFileIndex IndexUnitFolder(const fs::path& folder) {
  UnitIndex index(folder);
  index.Look();
  return index.Files();
}

}  // namespace pallomir::station
