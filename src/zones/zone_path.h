#pragma once

#include <string>

#include "zones/zone_tree.h"

namespace pallomir {

/// The names on the way to a zone in a line, outermost first: "Depot › Loading bay". Of a long way the
/// innermost few. Empty for kNone.
std::string ZonePathText(const ZoneTree& zones, ZoneOrdinal zone);

}  // namespace pallomir
