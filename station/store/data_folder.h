#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "station/common/log.h"
#include "station/store/unit_index.h"
#include "station/store/unit_store.h"

namespace pallomir::station {

/// The data folder: a folder for each unit, named by its ID, full of data files. Read only; what an import
/// changes meanwhile is seen at the next read, what another process appends to a file about a second later.
///
/// While a file of a unit can't be read, reads of the unit find nothing, so that a reader does not go past
/// what is there: it comes back. That lasts as long as the system is short of something; a file that can't be
/// read for a reason of its own holds the others up for some seconds only.
class DataFolder : public UnitStore {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  DataFolder(std::filesystem::path folder, Log log, Clock clock = std::chrono::steady_clock::now)
      : folder_(std::move(folder)), log_(std::move(log)), clock_(std::move(clock)) {}

  bool Knows(std::string_view unitId) override;
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override;

  std::vector<StoredUnit> Units(std::string& problem) override;
  std::unique_ptr<StoreWriter> StartWriting(std::chrono::milliseconds patience,
                                            std::string& problem) override;

 private:
  using Time = std::chrono::steady_clock::time_point;

  /// What changes whenever a file of the folder comes or goes.
  struct Stamp {
    std::uint64_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Stamp&) const = default;
  };
  struct Unit {
    UnitIndex index;
    Stamp stamp;
    Time nextLook;  ///< at the files, whether the folder has changed or not
    std::optional<Time> unreadSince;
    std::set<std::string> told;  ///< of the problems of the latest look
  };

  static std::optional<Stamp> StampOf(const std::filesystem::path& folder);
  Unit* Looked(std::string_view unitId);
  void Look(Unit& unit);
  void Tell(Unit& unit);
  bool MustWait(Unit& unit) const;

  std::filesystem::path folder_;
  Log log_;
  Clock clock_;
  std::map<std::string, Unit, std::less<>> units_;
};

}  // namespace pallomir::station
