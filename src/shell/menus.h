#pragma once

#include "platform/menu_model.h"

namespace pallomir {

/// Fills the menu bar. Its one first menu is the popup; View, Options, Alerts, Zones and Help are its
/// submenus. An entry whose work is not built yet is there, because settings and rules refer to it, but not
/// visible.
void BuildMenus(MenuModel& menus);

/// Checks the array's entry `index` only and writes its caption behind `prefix` into the entry above it.
void ChooseInMenu(MenuModel& menus, const char* array, int index, const char* parent, const char* prefix);

/// The index of the array's entry with this caption, or -1.
int IndexOfCaption(const MenuModel& menus, const char* array, const std::string& caption);

}  // namespace pallomir
