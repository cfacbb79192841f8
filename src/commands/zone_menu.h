#pragma once

#include "commands/command.h"
#include "zones/zones.h"

namespace pallomir {

/// What the Zones menu shows.
struct ZoneMenuState {
  const ZoneTree* tree = nullptr;  ///< must not change while the menu shows it
  bool mayChange = true;           ///< false while a shape is drawn: entries that change the list are grey
  bool canUndo = false;
  bool canRedo = false;
  bool canSearch = false;  ///< the entries that search for visits can be chosen
  ZonePopupEntries popup;  ///< of a shape that is drawn
};

/// Shows the list: an entry for each top-level zone, whose submenu is made when it opens, with the entries of
/// its subzones. More than 500 siblings stand in groups, which are made when they open too. What an entry
/// acts on is its `index`, the zone's place in the list. Its `identifier` lies within 0x2000..0x3FFF, eight
/// for a zone, and repeats after 1024 zones.
void ShowZones(MenuModel& menus, const ZoneMenuState& state);

/// The entries of the zone under a clicked place stand behind all others, until the next call of this or of
/// ShowZones; kNone takes them away.
void ShowZoneUnderPointer(MenuModel& menus, const ZoneMenuState& state, ZoneOrdinal zone);

}  // namespace pallomir
