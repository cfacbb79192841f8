#pragma once

#include <string>

#include "commands/command.h"

namespace pallomir {

/// Fills the menu bar from the command table. Its one menu is the popup; View, Options, Alerts, Zones and
/// Help are its submenus. An entry whose work is not built yet is there, because settings and rules refer to
/// it, but not visible.
void BuildMenus(MenuModel& menus);

/// An entry for the end of the array of entries `of`, with the user's own text as caption.
MenuItem UserEntry(const MenuModel& menus, Command of, int index, std::string caption);

/// Checks the array's entry `index` only and writes its caption behind `prefix` into the menu that it is in.
void ChooseInMenu(MenuModel& menus, Command array, int index, const std::string& prefix);

}  // namespace pallomir
