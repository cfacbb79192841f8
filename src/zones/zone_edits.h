#pragma once

#include "zones/zone_tree.h"

namespace pallomir {

// What the user does with the tree. Each makes a new tree; the old one stays for undoing.

/// The new zone becomes the last subzone of `parent`, or the last top-level zone where that is kNone. It
/// inherits the `Spare` of the file's last zone.
ZoneTree WithZoneAdded(const ZoneTree& tree, ZoneOrdinal parent, ZoneContent content);

/// The zone gets other options and corners; its `Spare` and its subzones stay.
ZoneTree WithZoneChanged(const ZoneTree& tree, ZoneOrdinal zone, ZoneContent content);

/// Without the zone and all subzones under it.
ZoneTree WithZoneDeleted(const ZoneTree& tree, ZoneOrdinal zone);

/// The other top-level kind, which inverts the kind of every zone.
ZoneTree WithKindSwapped(const ZoneTree& tree);

}  // namespace pallomir
