#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "station/demo/path.h"
#include "station/store/position_source.h"

namespace pallomir::station {

/// A unit that needs no device. It drives its road again and again, one trip in each slot of time, and what
/// it reports at a moment depends on nothing but that moment. Slot 0 begins `startSeconds` after the start of
/// 1970 (UTC).
struct DemoUnit {
  std::string_view id;
  std::string_view description;
  std::int64_t slotSeconds = 0;  ///< longer than any trip; for the rest of it the unit stands at the end
  std::int64_t startSeconds = 0;
  Path there;
  Path back;  ///< driven in odd slots; empty if the road ends where it begins
};

/// The nine demo units, in the order of their IDs 000000000001 to 000000000009.
const std::vector<DemoUnit>& DemoUnits();

/// What one of DemoUnits() reports in a slot, strictly ascending in time: every 5 to 15 seconds while
/// driving, about once a minute while standing. The same for every call. Reports outside 2000 to 2031 are
/// left out.
std::vector<WireRecord> DemoReports(const DemoUnit& unit, std::int64_t slot);

}  // namespace pallomir::station
