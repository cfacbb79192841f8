#include "station/store/data_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <iterator>
#include <optional>

#include "base/whole_file.h"
#include "reports/file_summaries.h"
#include "station/store/data_files.h"
#include "station/store/demo_records.h"
#include "station/store/unit_index.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

std::string Failed(const std::string& what, const fs::path& path, std::error_code error) {
  return "can't " + what + " " + path.string() + ": " + error.message();
}

void FlushFolder(const fs::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

// A link to one is not plain.
bool IsPlainFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(fs::symlink_status(path, ignored));
}

using Files = std::span<const DataFileEntry>;

// The files that records from `first` to `last` belong in, and the one before them if it has room, so that
// many small imports do not make many small files.
Files FilesToRewrite(Files files, std::uint32_t first, std::uint32_t last) {
  auto begin = std::ranges::lower_bound(files, first, {}, &DataFileEntry::last);
  const auto end = std::ranges::upper_bound(begin, files.end(), last, {}, &DataFileEntry::first);
  if (begin != files.begin() && (begin - 1)->count < kRecordsPerPacket) --begin;
  return {begin, end};
}

// All records of the files, or nothing if one of them no longer has as many as the index says.
std::optional<std::vector<WireRecord>> ReadAll(Files files) {
  std::vector<WireRecord> records;
  for (const DataFileEntry& file : files) {
    const DataFileContent content = ReadDataFile(file.path);
    if (content.records.size() != file.count) return std::nullopt;
    records.insert(records.end(), content.records.begin(), content.records.end());
  }
  return records;
}

// Of two records of the same second the old one is kept.
std::vector<WireRecord> Merged(std::span<const WireRecord> old, std::span<const WireRecord> records) {
  std::vector<WireRecord> merged;
  merged.reserve(old.size() + records.size());
  std::ranges::set_union(old, records, std::back_inserter(merged), {}, &WireRecord::time, &WireRecord::time);
  return merged;
}

// The unit's folder that is in use, and the one that is being built. Once they have been exchanged, `staged`
// is the old one.
struct UnitFolders {
  fs::path live;
  fs::path staged;
};

// Plain files in the staged folder are also in the live one, so they can go. Anything else (folders, links)
// was not copied and moves to the live one.
std::error_code ClearStaged(const UnitFolders& folders) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator entry(folders.staged, error), end; !error && entry != end;
       entry.increment(error))
    entries.push_back(*entry);
  if (error == std::errc::no_such_file_or_directory) return {};
  for (const auto& entry : entries) {
    if (error) return error;
    const fs::path& path = entry.path();
    if (IsPlainFile(path))
      fs::remove(path, error);
    else if (::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, (folders.live / path.filename()).c_str(),
                         RENAME_NOREPLACE) != 0)
      error = {errno, std::generic_category()};
  }
  if (!error) fs::remove(folders.staged, error);
  return error;
}

// The live folder's files that don't change, as hard links where the file system has them.
std::string StageOldFiles(const UnitFolders& folders, Files rewritten) {
  std::error_code error;
  for (fs::directory_iterator entry(folders.live, error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path& path = entry->path();
    if (!IsPlainFile(path) || IsDemoFileName(path.filename().native())) continue;
    if (std::ranges::find(rewritten, path, &DataFileEntry::path) != rewritten.end()) continue;
    std::error_code failure;
    const fs::path staged = folders.staged / path.filename();
    fs::create_hard_link(path, staged, failure);
    if (failure) fs::copy_file(path, staged, failure);
    if (failure) return Failed("keep", path, failure);
  }
  if (error && error != std::errc::no_such_file_or_directory) return Failed("list", folders.live, error);
  return "";
}

// The name may be taken by a file that isn't a data file, or by a folder or link that moves along later. Then
// a longer name takes its place in the same order.
fs::path FreeName(const UnitFolders& folders, std::uint32_t packedTime) {
  const fs::path name = DataFileName(packedTime);
  const auto isTaken = [&folders](const fs::path& wanted) {
    std::error_code ignored;
    const auto live = fs::symlink_status(folders.live / wanted, ignored);
    return fs::exists(folders.staged / wanted, ignored) || (fs::exists(live) && !fs::is_regular_file(live));
  };
  fs::path free = name;
  for (int i = 1; isTaken(free); ++i)
    free = name.stem().string() + "-" + std::to_string(i) + name.extension().string();
  return folders.staged / free;
}

std::string StageRecords(const UnitFolders& folders, std::span<const WireRecord> records) {
  assert(IsStrictlyAscending(records));
  while (!records.empty()) {
    const auto chunk = records.first(std::min(records.size(), kRecordsPerPacket));
    const fs::path file = FreeName(folders, chunk.front().time);
    const Bytes bytes = EncodeDataFile(chunk);
    if (const auto error = ReplaceFile(file, AsText(bytes))) return Failed("write", file, error);
    records = records.subspan(chunk.size());
  }
  return "";
}

std::error_code PutInPlace(const UnitFolders& folders) {
  std::error_code ignored;
  const bool isNew = !fs::exists(folders.live, ignored);
  const unsigned how = isNew ? 0 : RENAME_EXCHANGE;
  if (::renameat2(AT_FDCWD, folders.staged.c_str(), AT_FDCWD, folders.live.c_str(), how) != 0)
    return {errno, std::generic_category()};
  FlushFolder(folders.live.parent_path());
  FlushFolder(folders.staged.parent_path());
  return {};
}

std::string Rebuild(const UnitFolders& folders, Files rewritten, std::span<const WireRecord> records) {
  std::error_code error = ClearStaged(folders);
  if (error) return Failed("clear", folders.staged, error);
  fs::create_directory(folders.staged, error);
  if (error) return Failed("create", folders.staged, error);
  std::string problem = StageOldFiles(folders, rewritten);
  if (problem.empty()) problem = StageRecords(folders, records);
  if (problem.empty())
    if (error = PutInPlace(folders); error) problem = Failed("replace", folders.live, error);
  ClearStaged(folders);  // what is left now, the next import clears
  return problem;
}

std::string LinkAmong(Files files) {
  const auto link = std::ranges::find_if(files, [](const auto& file) { return !IsPlainFile(file.path); });
  return link == files.end() ? "" : link->path.string() + " is a link, which an import leaves alone";
}

// Why nothing can be imported. Empty if the folders are plain and all of the unit's files could be read.
std::string WhyNotInto(const UnitFolders& folders, const DataFileIndex& index) {
  for (const fs::path& folder : {folders.live, folders.staged})
    if (std::string problem = NoPlainFolder(folder); !problem.empty()) return problem;
  return index.unread.empty() ? "" : index.unread.front() + "; nothing was imported";
}

}  // namespace

MergeOutcome MergeIntoUnit(const ImportLock& lock, std::string_view unitId,
                           std::span<const WireRecord> records) {
  assert(lock.Problem().empty());
  assert(IsUnitId(unitId) && IsStrictlyAscending(records));
  MergeOutcome outcome;
  if (records.empty()) return outcome;
  const UnitFolders folders{lock.DataFolder() / unitId, lock.Incoming() / unitId};
  const DataFileIndex index = IndexUnitFolder(folders.live);
  const Files rewritten = FilesToRewrite(index.files, records.front().time, records.back().time);
  outcome.problems = index.problems;
  outcome.error = WhyNotInto(folders, index);
  if (outcome.error.empty()) outcome.error = LinkAmong(rewritten);
  if (!outcome.error.empty()) return outcome;

  const auto old = ReadAll(rewritten);
  if (!old) {
    outcome.error = "the files in " + folders.live.string() + " changed while they were read";
    return outcome;
  }
  const std::vector<WireRecord> merged = Merged(*old, records);
  assert(merged.size() >= old->size() && merged.size() <= old->size() + records.size());
  const std::size_t added = merged.size() - old->size();
  if (added > 0) outcome.error = Rebuild(folders, rewritten, merged);
  if (!outcome.error.empty()) return outcome;
  StoreSummaries(lock.DataFolder(), unitId);
  outcome.added = added;
  outcome.alreadyThere = records.size() - added;
  return outcome;
}

}  // namespace pallomir::station
