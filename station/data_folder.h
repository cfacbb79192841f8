#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "station/log.h"
#include "station/position_source.h"

namespace pallomir::station {

/// One data file of a unit, as the index knows it.
struct DataFileEntry {
  std::filesystem::path path;
  std::uint32_t first = 0;  ///< packed times of its first and last record
  std::uint32_t last = 0;
  std::size_t count = 0;
};

/// The data files of a unit's folder in time order, no two of them overlapping. Files that are none, or that
/// overlap an earlier one, are named in `problems` and otherwise as if they were not there.
struct DataFileIndex {
  std::vector<DataFileEntry> files;
  std::vector<std::string> problems;
};
DataFileIndex IndexUnitFolder(const std::filesystem::path& folder);

/// The data folder: a folder for each unit, named by its ID, full of data files. Read only; what an import
/// changes meanwhile is seen at the next read.
class DataFolder : public PositionSource {
 public:
  DataFolder(std::filesystem::path folder, Log log) : folder_(std::move(folder)), log_(std::move(log)) {}

  bool Knows(std::string_view unitId) override;
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override;

  /// The IDs of all units, ascending.
  std::vector<std::string> Units() const;

 private:
  /// What changes whenever a file of the folder comes or goes.
  struct Stamp {
    std::uint64_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Stamp&) const = default;
  };
  struct Unit {
    Stamp stamp;
    DataFileIndex index;
  };

  static std::optional<Stamp> StampOf(const std::filesystem::path& folder);
  const DataFileIndex* IndexOf(std::string_view unitId);
  void Forget(std::string_view unitId);

  std::filesystem::path folder_;
  Log log_;
  std::map<std::string, Unit, std::less<>> units_;
};

}  // namespace pallomir::station
