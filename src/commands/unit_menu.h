#pragma once

#include <functional>
#include <vector>

#include "commands/command_handlers.h"
#include "tracking/unit_register.h"

namespace pallomir {

/// What the units' entries and keys do; from now on the menu follows the list.
void JoinUnits(MenuModel& menus, CommandHandlers& handlers, UnitRegister& units);

/// The array of menu entries that holds the units: entry 0 is a template that shows only when there is no
/// unit, entry i is unit i, its tag the record without its end, its check mark whether it is enabled.
void ShowUnitsInMenu(MenuModel& menus, const std::vector<MobileUnit>& units);
/// The same units, of which others are enabled: the entries stay, as one of them may have been clicked just
/// now.
void ShowUnitFlags(MenuModel& menus, const std::vector<MobileUnit>& units);

/// The units that tell nothing new any more are marked in the menu that holds the units' entries: those for
/// which `isStale` gives true.
void MarkStaleUnits(MenuItem& menu, const std::vector<MobileUnit>& units,
                    const std::function<bool(const MobileUnit&)>& isStale);

/// The array of entries that fit the map to one displayed unit: entry k is the k-th unit that is enabled.
void ShowUnitsToFit(MenuModel& menus, const std::vector<MobileUnit>& units);

}  // namespace pallomir
