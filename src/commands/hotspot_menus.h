#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/command.h"
#include "hotspots/hotspot_lists.h"

namespace pallomir {

/// Rebuilds the menu entries of a stored list: entry i is network i. Entry 0 stands for an empty list and
/// shows only then.
void LoadSSIDs(MenuModel& menus, std::string_view stored);
void LoadSecureSSIDs(MenuModel& menus, std::string_view stored);

/// The lists as the menus hold them.
std::vector<std::string> HotspotsFromMenu(const MenuModel& menus);
std::vector<SecureHotspot> SecureHotspotsFromMenu(const MenuModel& menus);

/// Whether the hotspot list names what is permitted or what is prohibited: replaces `mode` ("Permitted" or
/// "Prohibited"; any other counts as the first) by the other one when `toggle` is set, and shows it in the
/// menus. The caller stores it.
void HotSpotsChange(MenuModel& menus, std::string& mode, bool toggle);

}  // namespace pallomir
