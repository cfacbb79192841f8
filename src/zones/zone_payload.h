#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zones/zone_tree.h"

namespace pallomir {

/// What the page's zone list is told of a zone: "T" for an alerted zone, else "F"; "T", latitude and
/// longitude of each corner with six decimals in 11 characters each; and a closing "F".
std::string ZonePayload(const ZoneTree& tree, ZoneOrdinal zone);

/// A shape is read up to so many corners.
inline constexpr std::size_t kMaxShapeVertices = 9999;

/// The corners of a shape that the page sends: latitude and longitude in degrees, each followed by "~". What
/// has no "~" behind it is left out. Nothing where a number is none or out of range.
std::optional<std::vector<ZoneVertex>> ParseShape(std::string_view payload);

}  // namespace pallomir
