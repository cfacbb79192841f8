#include "reports/unit_scan.h"

#include <cassert>
#include <utility>

#include "reports/data_file.h"

namespace pallomir {
namespace {

std::size_t LastRecord(ByteView file) { return file.size() - kRecordSize; }

std::uint32_t Offset(std::int32_t value, std::int32_t from) {
  return static_cast<std::uint32_t>(value) - static_cast<std::uint32_t>(from);
}

}  // namespace

// Whether the file is in order, none of its records is before the span, and none lies in the area's box. Most
// files of a search are like that, so this runs through all records without a decision for any of them.
bool UnitScan::LiesOutside(ByteView file) const {
  const PositionBox& box = area_->Box();
  if (FileRecordTime(file, 0) < span_.first) return false;
  if (FileRecordTime(file, LastRecord(file)) > previous_) return false;
  const std::uint32_t height = Offset(box.maxLatitude, box.minLatitude);
  const std::uint32_t width = Offset(box.maxLongitude, box.minLongitude);
  std::uint32_t earlier = 0;
  unsigned isInside = 0, isUnordered = 0;
  for (std::size_t at = 0; at < file.size(); at += kRecordSize) {
    const std::uint32_t time = FileRecordTime(file, at);
    isUnordered |= static_cast<unsigned>(time < earlier);
    earlier = time;
    isInside |= static_cast<unsigned>(Offset(FileRecordLatitude(file, at), box.minLatitude) <= height) &
                static_cast<unsigned>(Offset(FileRecordLongitude(file, at), box.minLongitude) <= width);
  }
  return (isInside | isUnordered) == 0;
}

UnitScan::Examined UnitScan::Examine(ByteView file) {
  assert(file.size() % kRecordSize == 0);
  if (file.empty()) return {};
  if (!LiesOutside(file)) return ExamineRecords(file);
  CloseVisit();
  previous_ = FileRecordTime(file, 0);
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
