#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "reports/file_summaries.h"
#include "reports/record_time.h"
#include "reports/search_area.h"

namespace pallomir {

/// A run of records of one unit, one after the other, that lie in the area and the time that were asked for.
/// Times are packed, UTC.
struct Visit {
  std::size_t unit = 0;  ///< its place in the query, from 0
  std::uint32_t entry = 0;
  std::uint32_t exit = 0;
  std::uint32_t records = 0;
  bool operator==(const Visit&) const = default;
};

/// Finds the visits of one unit in its files, which it is given from the newest to the oldest. No gap in time
/// ends a visit, nor does the end of a file.
class UnitScan {
 public:
  /// Whether a visit that ends then is wanted, beside those found. If not, no earlier one is.
  using IsWanted = std::function<bool(std::uint32_t exit)>;

  UnitScan(std::size_t unit, const SearchArea& area, TimeSpan span, IsWanted isWanted)
      : area_(&area), span_(span), isWanted_(std::move(isWanted)), unit_(unit) {}

  enum class Outcome {
    kGoesOn,
    kHasAll,      ///< what is older lies before the time asked for, or is not wanted
    kOutOfOrder,  ///< a record is later than the one examined before it
  };
  struct Examined {
    Outcome outcome = Outcome::kGoesOn;
    std::size_t records = 0;     ///< how many, with the last one
    std::size_t position = 0;    ///< kOutOfOrder: which byte of the file the late record starts at
    std::uint32_t previous = 0;  ///< kOutOfOrder: the times, flags clear, of the one before it
    std::uint32_t time = 0;      ///< and of itself
  };

  /// `file` is whole records. Nothing may be examined after another outcome than kGoesOn.
  Examined Examine(ByteView file);

  /// Does the same for a file that it needn't see: one that the summary tells to lie elsewhere. False if it
  /// has to be examined.
  bool PassOver(const FileSummary& summary);

  /// What is still open is a visit too.
  void Finish() { CloseVisit(); }

  /// Those that have ended, newest first.
  const std::vector<Visit>& Visits() const { return visits_; }
  bool HasOpenVisit() const { return open_.records > 0; }

 private:
  bool IsPassedOver(ByteView file) const;
  Examined ExamineRecords(ByteView file);
  bool IsInTurn(std::uint32_t first, std::uint32_t last) const;
  void GoBeyond(std::uint32_t first);
  void CloseVisit();

  const SearchArea* area_;
  TimeSpan span_;
  IsWanted isWanted_;
  std::size_t unit_;
  std::uint32_t previous_ = ~kPackedTimeFlag;
  Visit open_;
  std::vector<Visit> visits_;
};

}  // namespace pallomir
