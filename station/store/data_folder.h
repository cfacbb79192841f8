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

/// A store in a folder: a folder of data files for each unit, named by the unit's ID, and a file of
/// descriptions. A read sees at once what an import has changed, and within about a second what another
/// process has appended to a file.
///
/// While one of a unit's files can't be read, reading the unit gives nothing: otherwise readers would go past
/// the records of that file and never come back for them. This lasts while the system is short of descriptors
/// or memory. A file that can't be read for any other reason holds up the others for ten seconds.
class DataFolder : public UnitStore {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  /// `folder` need not exist. `clock` is for tests.
  DataFolder(std::filesystem::path folder, Log log, Clock clock = std::chrono::steady_clock::now)
      : folder_(std::move(folder)), log_(std::move(log)), clock_(std::move(clock)) {}

  bool Knows(std::string_view unitId) override;
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override;

  std::vector<StoredUnit> Units(std::string& problem) override;
  std::vector<std::string> UnitsToSearch(std::string& problem) const override;
  std::unique_ptr<StoreWriter> StartWriting(std::chrono::milliseconds patience,
                                            std::string& problem) override;
  std::unique_ptr<VisitSearch> SearchVisits(VisitQuery query) const override;

 private:
  using Time = std::chrono::steady_clock::time_point;

  struct Unit {
    UnitIndex index;
    FileStamp stamp;  ///< of its folder: differs if a file has come or gone since
    Time nextUpdate;  ///< of the index, whether the folder has changed or not
    std::optional<Time> unreadSince;
    std::set<std::string> problems;  ///< of the latest update; they are in the log
  };

  Unit* UpToDateUnit(std::string_view unitId);
  void Update(Unit& unit);
  void LogNewProblems(Unit& unit);
  bool MustWait(Unit& unit) const;

  std::filesystem::path folder_;
  Log log_;
  Clock clock_;
  std::map<std::string, Unit, std::less<>> units_;
};

}  // namespace pallomir::station
