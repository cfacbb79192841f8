#pragma once

#include <string>
#include <vector>

#include "hotspots/hotspot_lists.h"
#include "ui/list_grid.h"

namespace pallomir {

/// Columns of the hotspot editors; the first has the name only.
inline constexpr std::size_t kHotspotSsidColumn = 0;
inline constexpr std::size_t kHotspotKeyColumn = 1;
inline constexpr std::size_t kHotspotProtocolColumn = 2;

/// The list grids as the editors open them, a row a network.
ListGrid OpenHotspotEditor(const std::vector<std::string>& ssids);
ListGrid OpenSecureHotspotEditor(const std::vector<SecureHotspot>& hotspots);

/// What Apply stores. A row whose name is empty or blank is none; a network that was not edited stays byte
/// for byte. Where no key was entered it is empty; where no protocol was chosen it is the default one.
std::vector<std::string> HotspotsOfEditor(const ListGrid& grid);
std::vector<SecureHotspot> SecureHotspotsOfEditor(const ListGrid& grid);

}  // namespace pallomir
