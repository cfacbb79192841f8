#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/file_stamp.h"

namespace pallomir::station {

/// One data file of a unit, as the index knows it.
struct DataFileEntry {
  std::filesystem::path path;
  std::uint32_t first = 0;  ///< packed times of its first and last record
  std::uint32_t last = 0;
  std::size_t count = 0;
};

/// The data files of a unit's folder in order of time, without overlaps and without those of the demo. Files
/// that are not data files, or that overlap an earlier one, are left out and named in `problems`. What can't
/// be read, a file or the folder itself, may hold any records: it is named in `unread`.
struct DataFileIndex {
  std::vector<DataFileEntry> files;
  std::vector<std::string> problems;
  std::vector<std::string> unread;
  bool hasShortage = false;  ///< something is unread because the system is short of descriptors or memory
};

/// The index of a unit's folder. Updating it reads only the files that have changed.
class UnitIndex {
 public:
  explicit UnitIndex(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Updates the index: reads the files that are new, differ in size or time, or could not be read last time.
  /// A missing folder counts as an empty one.
  void Update();

  /// Says that the file is not what the index says. The next update reads it again.
  void Doubt(const std::filesystem::path& file) { known_.erase(file); }

  const std::filesystem::path& Folder() const { return folder_; }
  const DataFileIndex& Files() const { return files_; }

 private:
  struct KnownFile {
    FileStamp stamp;  ///< from before it was read, so that the next update sees a change made meanwhile
    DataFileEntry entry;
    std::string problem;
  };

  void UpdateFile(const std::filesystem::path& file, std::map<std::filesystem::path, KnownFile>& found);
  void AddUnread(const std::filesystem::path& path, const std::string& problem, std::error_code error);
  void Arrange();

  std::filesystem::path folder_;
  std::map<std::filesystem::path, KnownFile> known_;
  DataFileIndex files_;
};

/// The index of a unit's folder as it is now.
DataFileIndex IndexUnitFolder(const std::filesystem::path& folder);

}  // namespace pallomir::station
