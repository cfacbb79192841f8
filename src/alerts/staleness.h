#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "tracking/mobile_units.h"
#include "tracking/point_store.h"

namespace pallomir {

/// Whether a unit whose newest point is of this time is stale by now, by the stored choice 1..5. One of which
/// no point is known is not.
bool IsStale(std::optional<Millis> newestUtc, Millis nowUtc, int choice);

/// The same of a unit of the list: one that is not displayed, or not yet, is not stale.
bool IsUnitStale(const UnitBook& units, const PointStore& points, const std::string& unitId, Millis nowUtc,
                 int choice);

}  // namespace pallomir
