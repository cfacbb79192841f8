#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tracking/point_store.h"

namespace pallomir {

/// How far a unit's clock may be ahead of ours.
inline constexpr Millis kClockTolerance = kMinute;

/// When the newest data came, by a clock that says `nowUtc`. A point dated beyond the tolerance says nothing
/// about that: it would pin the age at zero until its date has come.
struct NewestData {
  std::optional<Millis> utc;   ///< of the newest point that is not dated later
  std::size_t datedLater = 0;  ///< points beyond the tolerance
};

/// The same of the enabled unit k; nothing where it has no such point.
std::optional<Millis> NewestOfUnit(const PointStore& store, std::size_t k, Millis nowUtc);

NewestData NewestDataAt(const PointStore& store, Millis nowUtc);

/// "Pallomir 1 02:00:00  523 Data Points": days, if any, and time since the newest data, and all points. No
/// age where there is none.
std::string AgeCaption(const NewestData& newest, std::size_t pointCount, Millis nowUtc);

}  // namespace pallomir
