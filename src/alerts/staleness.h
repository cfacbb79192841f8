#pragma once

#include <optional>

#include "base/civil_time.h"

namespace pallomir {

/// The age from which data are stale by the stored choice 1..5; nothing where they never are.
std::optional<Millis> StaleAge(int choice);

/// Whether a unit whose newest point is of this time is stale by now. One of which no point is known is not.
bool IsStale(std::optional<Millis> newestUtc, Millis nowUtc, int choice);

}  // namespace pallomir
