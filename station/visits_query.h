#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "station/visits.h"

namespace pallomir::station {

/// Reads the query of "/visits", without its "?": NAME=VALUE, joined by "&", percent-encoded.
///
/// Where: `minLat`, `maxLat`, `minLng` and `maxLng`, or `lat` and `lng` with `zoom` (0 to 22) or `radius`
/// (metres to each side); degrees. `unit`: an ID, may be repeated; none is all. `from` and `to`: as
/// ParseMoment has them. `limit`: 1 to 500. What is not named is as in VisitsCommand. Otherwise a sentence
/// that says what is wrong.
std::variant<VisitsCommand, std::string> ParseVisitsQuery(std::string_view query);

}  // namespace pallomir::station
