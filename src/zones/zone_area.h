#pragma once

#include <span>

#include "zones/zone_tree.h"

namespace pallomir {

/// What the outline encloses on a round earth, in square miles. Edges are straight on the map. A part that an
/// outline goes around the other way is taken off.
double AreaInSquareMiles(std::span<const ZoneVertex> vertices);

}  // namespace pallomir
