#pragma once

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "reports/data_file_reader.h"
#include "reports/search_area.h"
#include "reports/unit_files.h"
#include "reports/unit_scan.h"
#include "reports/visit_messages.h"

namespace pallomir {

/// How many visits a search lists where nobody says otherwise.
inline constexpr std::size_t kMostVisits = 500;

struct VisitQuery {
  std::vector<std::string> unitIds;
  SearchArea area;
  TimeSpan span;
  std::size_t limit = kMostVisits;  ///< 1: the most recent visit alone
};

/// Looks through a data folder for the visits of units to an area.
///
/// The files of a unit are taken in the order of their names, from the last to the first, and so are the
/// records of a file. The newest `limit` visits by their exits are listed, whichever unit's; of equal ones
/// that of the unit asked for first. A unit is read no further when its older visits could not be listed, or
/// lie before the time asked for. What can't be read, or is out of order, ends the search: what was found
/// before stays listed. An import may put another folder in the place of a unit's: then that unit is searched
/// anew, once. Files that a summary tells to lie elsewhere are not read (file_summaries.h); it changes
/// nothing else.
///
/// It belongs to one thread at a time, which works through it in short steps and may leave it after any.
class VisitSearch {
 public:
  /// `dataFolder` has a folder of data files for each unit, named by its ID.
  VisitSearch(std::filesystem::path dataFolder, VisitQuery query);
  VisitSearch(const VisitSearch&) = delete;
  VisitSearch& operator=(const VisitSearch&) = delete;

  /// Works on: lists the files of a unit, or examines some 20,000 records. False once the search is over.
  bool Step();

  struct Progress {
    std::uint64_t records = 0;
    std::size_t files = 0;      ///< done
    std::size_t fileCount = 0;  ///< of the units listed so far
    std::size_t units = 0;      ///< done
    int percent = 0;
  };
  static constexpr std::uint64_t kRecordsPerBlock = 20'000;
  Progress State() const;

  /// Those found so far, newest exit first.
  std::vector<Visit> Visits() const;

  /// What ended the search before its time, in lines; empty if nothing did.
  const std::string& Problem() const { return problem_; }

  const VisitQuery& Query() const { return query_; }

 private:
  void ListNextUnit();
  void BeginUnit();
  void CloseUnit();
  void EndUnit();
  void ReadNextFile();
  bool PassOverNextFile();
  void TakeFile();
  void StartAnew();
  void Stop(std::string problem);
  bool IsWanted(std::uint32_t newest) const;
  bool CanStillList(std::uint32_t exit) const;
  std::size_t FileCountOf(std::size_t unit) const { return units_[unit].Names().size(); }
  SearchPlace Place() const;

  std::filesystem::path folder_;
  VisitQuery query_;
  std::deque<UnitFiles> units_;   // as far as they are listed
  FileSummaries summaries_;       // of the unit at work
  std::size_t unit_ = 0;          // the one at work
  std::optional<UnitScan> scan_;  // of it
  std::size_t filesLeft_ = 0;     // of it; the last of them is next
  bool isAnew_ = false;
  bool isOver_ = false;
  std::uint64_t records_ = 0;
  std::vector<Visit> listed_;  // of the units before, newest first
  std::string problem_;
  DataFileReader reader_;
};

}  // namespace pallomir
