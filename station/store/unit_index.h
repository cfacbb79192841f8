#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace pallomir::station {

/// One data file of a unit, as the index knows it.
struct DataFileEntry {
  std::filesystem::path path;
  std::uint32_t first = 0;  ///< packed times of its first and last record
  std::uint32_t last = 0;
  std::size_t count = 0;
};

/// The data files of a unit's folder in time order, no two of them overlapping. Files that are none, or that
/// overlap an earlier one, are named in `problems` and otherwise as if they were not there. What can't be
/// read, a file or the folder, may have any records: it is named in `unread`.
struct DataFileIndex {
  std::vector<DataFileEntry> files;
  std::vector<std::string> problems;
  std::vector<std::string> unread;
  bool isShort = false;  ///< something is unread because the system is short of descriptors or memory
};

/// The index of a unit's folder, kept up to date by reading only what has changed.
class UnitIndex {
 public:
  explicit UnitIndex(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Looks at the folder and reads the files that are new, have another size or time, or could not be read
  /// the last time. A folder that is missing has no file.
  void Look();

  /// The file is not as the index has it: it is read again at the next look.
  void Doubt(const std::filesystem::path& file) { known_.erase(file); }

  const std::filesystem::path& Folder() const { return folder_; }
  const DataFileIndex& Files() const { return files_; }

 private:
  struct Stamp {
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Stamp&) const = default;
  };
  struct KnownFile {
    Stamp stamp;  ///< before it was read, so that a change meanwhile is seen at the next look
    DataFileEntry entry;
    std::string problem;
  };

  void LookAt(const std::filesystem::path& file, std::map<std::filesystem::path, KnownFile>& found);
  void Unread(const std::filesystem::path& path, const std::string& problem, std::error_code error);
  void Arrange();

  std::filesystem::path folder_;
  std::map<std::filesystem::path, KnownFile> known_;
  DataFileIndex files_;
};

/// The index of a folder as it is now.
DataFileIndex IndexUnitFolder(const std::filesystem::path& folder);

}  // namespace pallomir::station
