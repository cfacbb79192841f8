#include "station/store/demo_records.h"

#include <algorithm>
#include <cassert>
#include <cctype>
#include <cerrno>
#include <fstream>
#include <set>

#include "base/whole_file.h"
#include "reports/file_summaries.h"
#include "station/store/data_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEnding = "-demo.dat";
constexpr std::string_view kTimeForm = "00000000-000000";

// Sorts as the time does.
std::string TimeName(std::uint32_t packedTime) {
  return DataFileName(packedTime).substr(0, kTimeForm.size());
}

std::string DemoFileName(std::uint32_t packedTime) { return TimeName(packedTime).append(kEnding); }

struct Listing {
  std::set<std::string> demoFiles;
  bool hasOthers = false;
};

Listing List(const fs::path& folder, std::error_code& error) {
  Listing listing;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end && !listing.hasOthers;
       entry.increment(error)) {
    std::string name = entry->path().filename().string();
    std::error_code ignored;
    if (IsDemoFileName(name) && fs::is_regular_file(entry->symlink_status(ignored)))
      listing.demoFiles.insert(std::move(name));
    else
      listing.hasOthers = true;
  }
  if (error == std::errc::no_such_file_or_directory) error.clear();
  return listing;
}

std::string Failed(const char* what, const fs::path& path, std::error_code error) {
  return std::string("can't ") + what + " " + path.string() + ": " + error.message();
}

/// The files of a unit while they are brought up to date.
class DemoFiles {
 public:
  DemoFiles(const ImportLock& lock, std::string_view unitId, const std::set<std::string>& old)
      : folder_(lock.DataFolder() / unitId), beside_(lock.Incoming() / "demo"), old_(old) {}

  /// Writes the records to files that are not as they should be yet. Returns an error message, or nothing.
  std::string Write(std::span<const WireRecord> records) {
    while (!records.empty()) {
      const auto chunk = records.first(std::min(records.size(), kRecordsPerPacket));
      const std::string name = DemoFileName(chunk.front().time);
      const Bytes bytes = EncodeDataFile(chunk);
      wanted_.insert(name);
      if (std::string problem = WriteFile(folder_ / name, AsText(bytes)); !problem.empty()) return problem;
      records = records.subspan(chunk.size());
    }
    return "";
  }

  /// Removes what lies in the window and was not written, and what is older than `oldest`.
  std::string Drop(PackedWindow window, std::uint32_t oldest) {
    const std::string first = TimeName(window.first), last = TimeName(window.last), kept = TimeName(oldest);
    for (const std::string& name : old_) {
      const std::string time = name.substr(0, kTimeForm.size());
      const bool isReplaced = time >= first && time <= last && !wanted_.contains(name);
      if (!isReplaced && time >= kept) continue;
      std::error_code error;
      if (!fs::remove(folder_ / name, error) && error) return Failed("remove", folder_ / name, error);
      hasChanged_ = true;
    }
    return "";
  }

  bool HasChanged() const { return hasChanged_; }

 private:
  std::string WriteFile(const fs::path& file, std::string_view content) {
    std::error_code error;
    if (old_.contains(file.filename().string()) && ReadWholeFile(file, kMaxDataFileSize, error) == content)
      return "";
    fs::remove(beside_, error);  // what a crash has left, or somebody's link
    // A crash of the system may lose it, which the next start mends: so it need not be flushed to the disk.
    std::ofstream out(beside_, std::ios::binary);
    errno = 0;
    if (!out.write(content.data(), std::ssize(content)) || !out.flush()) {
      error = {errno, std::generic_category()};
      std::error_code ignored;
      fs::remove(beside_, ignored);
      return Failed("write", beside_, error);
    }
    out.close();
    fs::rename(beside_, file, error);
    if (error) return Failed("write", file, error);
    hasChanged_ = true;
    return "";
  }

  fs::path folder_;
  fs::path beside_;  // where a file is written before it takes its place: searches take all in the folder
  const std::set<std::string>& old_;
  std::set<std::string> wanted_;
  bool hasChanged_ = false;
};

}  // namespace

bool IsDemoFileName(std::string_view name) {
  if (name.size() != kTimeForm.size() + kEnding.size() || !name.ends_with(kEnding)) return false;
  return std::ranges::equal(name.substr(0, kTimeForm.size()), kTimeForm, [](unsigned char c, char form) {
    return form == '0' ? std::isdigit(c) != 0 : c == '-';
  });
}

bool IsDemoFolder(const fs::path& folder) {
  std::error_code error;
  const Listing listing = List(folder, error);
  return !error && !listing.hasOthers && !listing.demoFiles.empty();
}

std::string KeepDemoRecords(const ImportLock& lock, std::string_view unitId, PackedWindow window,
                            std::span<const WireRecord> records, std::uint32_t oldest) {
  assert(lock.Problem().empty());
  assert(records.empty() || (records.front().time >= window.first && records.back().time <= window.last));
  const fs::path folder = lock.DataFolder() / unitId;
  if (std::string problem = NoPlainFolder(folder); !problem.empty()) return problem;
  std::error_code error;
  const Listing old = List(folder, error);
  if (error) return Failed("list", folder, error);
  if (old.hasOthers) return "";  // somebody's data
  fs::create_directory(folder, error);
  if (error) return Failed("create", folder, error);
  DemoFiles files(lock, unitId, old.demoFiles);
  std::string problem = files.Write(records);
  if (problem.empty()) problem = files.Drop(window, oldest);
  if (files.HasChanged()) StoreSummaries(lock.DataFolder(), unitId);
  return problem;
}

}  // namespace pallomir::station
