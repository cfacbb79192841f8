#include "station/store/position_source.h"

#include <algorithm>
#include <cassert>
#include <functional>

#include "reports/record_time.h"

namespace pallomir::station {

std::optional<PackedWindow> PackWindow(TimeWindow window) {
  const TimeSpan span = SpanOf(window.from, window.until);
  if (span.last < span.first) return std::nullopt;
  return PackedWindow{span.first, span.last};
}

bool IsStrictlyAscending(std::span<const WireRecord> records) {
  return std::ranges::is_sorted(records, std::ranges::less_equal{}, &WireRecord::time) &&
         std::ranges::all_of(records,
                             [](const auto& record) { return (record.time & kPackedTimeFlag) == 0; });
}

std::span<const WireRecord> RecordsInside(std::span<const WireRecord> records, PackedWindow window) {
  assert(window.first <= window.last);
  // That the records ascend is asserted by who made them: checked here, each packet of an answer would read
  // all.
  const auto first = std::ranges::lower_bound(records, window.first, {}, &WireRecord::time);
  const auto last = std::ranges::upper_bound(first, records.end(), window.last, {}, &WireRecord::time);
  return {first, last};
}

}  // namespace pallomir::station
