#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "reports/nearby_points.h"

namespace pallomir::oracles {

/// The points near a place, found by the rule step by step: each point against a list of ten that is kept in
/// order.
std::vector<NearbyPoint> LiteralNearby(NearbyPoints::Tracks tracks, WorldPoint place,
                                       std::int32_t unitsPerPixel);

}  // namespace pallomir::oracles
