#include "reports/unit_scan.h"

#include <cassert>
#include <utility>

#include "reports/data_file.h"
#include "reports/outside_check.h"

namespace pallomir {
namespace {

std::size_t LastRecord(ByteView file) { return file.size() - kRecordSize; }

}  // namespace

// Whether none of the file's records needs a look of its own.
bool UnitScan::IsPassedOver(ByteView file) const {
  return IsInTurn(FileRecordTime(file, 0), FileRecordTime(file, LastRecord(file))) &&
         LiesOutside(file, area_->Box());
}

// Whether a file with these times can be passed over as a whole.
bool UnitScan::IsInTurn(std::uint32_t first, std::uint32_t last) const {
  return !area_->Box().IsEmpty() && first >= span_.first && last <= previous_;
}

void UnitScan::GoBeyond(std::uint32_t first) {
  CloseVisit();
  previous_ = first;
}

bool UnitScan::PassOver(const FileSummary& summary) {
  if (!IsInTurn(summary.first, summary.last) || summary.Meets(area_->Box())) return false;
  GoBeyond(summary.first);
  return true;
}

UnitScan::Examined UnitScan::Examine(ByteView file) {
  assert(file.size() % kRecordSize == 0);
  if (file.empty()) return {};
  if (!IsPassedOver(file)) return ExamineRecords(file);
  GoBeyond(FileRecordTime(file, 0));
  return {Outcome::kGoesOn, file.size() / kRecordSize, 0, 0, 0};
}

UnitScan::Examined UnitScan::ExamineRecords(ByteView file) {
  Examined examined;
  for (std::size_t at = file.size(); at > 0;) {
    at -= kRecordSize;
    ++examined.records;
    const std::uint32_t time = FileRecordTime(file, at);
    if (time > previous_) {
      examined = {Outcome::kOutOfOrder, examined.records, at, previous_, time};
      break;
    }
    previous_ = time;
    if (time < span_.first) {
      examined.outcome = Outcome::kHasAll;
      break;
    }
    if (time > span_.last) continue;
    if (!area_->Contains(FileRecordLatitude(file, at), FileRecordLongitude(file, at))) {
      CloseVisit();
      continue;
    }
    if (!HasOpenVisit() && !isWanted_(time)) {
      examined.outcome = Outcome::kHasAll;
      break;
    }
    if (open_.records++ == 0) open_.exit = time;
    open_.entry = time;
  }
  return examined;
}

void UnitScan::CloseVisit() {
  if (!HasOpenVisit()) return;
  open_.unit = unit_;
  visits_.push_back(std::exchange(open_, {}));
}

}  // namespace pallomir
