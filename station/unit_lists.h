#pragma once

#include <span>
#include <string>

#include "station/store/unit_store.h"

namespace pallomir::station {

/// The units for a reader: a line each, with ID, blank and description.
std::string UnitLines(std::span<const StoredUnit> units);

/// The units as the one text that the client stores: for each an X (it is enabled), the ID, the description
/// and "~".
std::string ClientUnitList(std::span<const StoredUnit> units);

}  // namespace pallomir::station
