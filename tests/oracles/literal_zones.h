#pragma once

#include "zones/zone_tree.h"

/// The rule of the zone query written down step by step, without a thought for speed or for trees too deep to
/// recurse into.
namespace pallomir::oracles {

struct LiteralAnswer {
  bool isAlert = false;
  ZoneOrdinal deepest = ZoneTree::kNone;
};

LiteralAnswer LiteralQuery(const ZoneTree& tree, double lat, double lng);

}  // namespace pallomir::oracles
