#pragma once

#include <string>
#include <vector>

#include "commands/command_handlers.h"
#include "hotspots/hotspot_room.h"

namespace pallomir {

/// What the entries of the Wi-Fi lists do.
void HandleHotspotCommands(CommandHandlers& handlers, HotspotRoom& room);

/// Shows lists and mode as they are now.
void ShowHotspots(MenuModel& menus, const HotspotRoom& room);

/// Rebuilds the menu entries of a list: entry i is network i. Entry 0 stands for an empty list and shows only
/// then.
void LoadSSIDs(MenuModel& menus, const std::vector<std::string>& ssids);
void LoadSecureSSIDs(MenuModel& menus, const std::vector<SecureHotspot>& hotspots);

/// Whether the first list names what is permitted or what is prohibited.
void ShowHotspotMode(MenuModel& menus, bool isProhibited);

}  // namespace pallomir
