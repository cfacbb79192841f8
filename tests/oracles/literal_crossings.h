#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "oracles/literal_zones.h"

namespace pallomir::oracles {

struct LiteralPlace {
  std::int64_t utc = 0;  // milliseconds
  std::int32_t x = 0;    // world coordinates
  std::int32_t y = 0;
};

struct LiteralCrossing {
  std::int64_t utc = 0;
  int zone = 0;  // ordinal
  bool hasEntered = false;
  bool isAlert = false;
  bool operator==(const LiteralCrossing&) const = default;
};

/// What a unit at these places, one after the other, does with the zones: each way between two places is cut
/// by every edge of every zone, and each piece asked for by the literal query.
std::vector<LiteralCrossing> LiteralCrossings(const LiteralTree& tree,
                                              const std::vector<LiteralPlace>& places);

}  // namespace pallomir::oracles
