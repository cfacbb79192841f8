#include "reports/outside_check.h"

#include "base/processor.h"
#include "reports/data_file.h"
#include "reports/outside_check_avx2.h"

namespace pallomir {
namespace {

std::uint32_t Offset(std::int32_t value, std::int32_t from) {
  return static_cast<std::uint32_t>(value) - static_cast<std::uint32_t>(from);
}

// Most files of a search are outside, so this runs through all records without a decision for any of them.
// `earlier` is the time before the first record.
bool LiesOutsideBehind(std::uint32_t earlier, ByteView file, const PositionBox& box) {
  const std::uint32_t height = Offset(box.maxLatitude, box.minLatitude);
  const std::uint32_t width = Offset(box.maxLongitude, box.minLongitude);
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

bool LiesOutsidePlainly(ByteView file, const PositionBox& box) { return LiesOutsideBehind(0, file, box); }

// The vectors read beyond a record: those at the end are looked at plainly.
bool LiesOutsideByVectors(ByteView file, const PositionBox& box) {
  const std::size_t pairs = file.size() < 2 * kRecordSize ? 0 : (file.size() / kRecordSize - 1) / 2;
  if (pairs == 0) return LiesOutsidePlainly(file, box);
  if (!PairsLieOutsideByAvx2(file.data(), pairs, box)) return false;
  const std::size_t rest = pairs * 2 * kRecordSize;
  return LiesOutsideBehind(FileRecordTime(file, rest - kRecordSize), file.subspan(rest), box);
}

}  // namespace

std::span<const OutsideCheck> OutsideChecks() {
  static constexpr OutsideCheck checks[] = {LiesOutsidePlainly, LiesOutsideByVectors};
  return std::span(checks).first(HasAvx2() ? 2 : 1);
}

bool LiesOutside(ByteView file, const PositionBox& box) {
  static const OutsideCheck check = OutsideChecks().back();
  return check(file, box);
}

}  // namespace pallomir
