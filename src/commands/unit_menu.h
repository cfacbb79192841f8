#pragma once

#include <vector>

#include "commands/command.h"
#include "tracking/mobile_units.h"

namespace pallomir {

/// The array of menu entries that holds the units: entry 0 is a template that shows only when there is no
/// unit, entry i is unit i, its tag the record without its end, its check mark whether it is enabled.
void ShowUnitsInMenu(MenuModel& menus, const std::vector<MobileUnit>& units);
std::vector<MobileUnit> UnitsFromMenu(const MenuModel& menus);

/// The array of entries that fit the map to one displayed unit: entry k is the k-th unit that is checked.
void ShowUnitsToFit(MenuModel& menus);

}  // namespace pallomir
