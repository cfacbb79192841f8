#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "station/demo/path.h"
#include "station/store/position_source.h"

namespace pallomir::station {

/// A unit that needs no device: it drives its road over and over, one trip a slot of time, and what it
/// reports follows from the moment alone. Slots are counted from 1970, shifted by `startSeconds`.
struct DemoUnit {
  std::string_view id;
  std::string_view description;
  std::int64_t slotSeconds = 0;  ///< longer than any trip; the rest of the slot it stands at the end
  std::int64_t startSeconds = 0;
  Path there;
  Path back;  ///< driven in odd slots; empty where the road ends at its beginning
};

/// The nine demo units, in the order of their IDs 000000000001 to 000000000009.
const std::vector<DemoUnit>& DemoUnits();

/// What a unit reports in one slot: every 5 to 15 seconds while driving, about once a minute while standing.
std::vector<WireRecord> DemoReports(const DemoUnit& unit, std::int64_t slot);

}  // namespace pallomir::station
