#pragma once

#include <string>
#include <vector>

#include "zones/zone_tree.h"

namespace pallomir {

/// What may surprise about a zone's place among the others, a sentence each: that it reaches beyond the zone
/// which it lies in, and that it overlaps zones beside it. All of it is legal. No more than a few sentences
/// are given.
std::vector<std::string> RemarksOn(const ZoneTree& tree, ZoneOrdinal zone);

}  // namespace pallomir
