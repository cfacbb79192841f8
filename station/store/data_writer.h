#pragma once

#include <span>
#include <string_view>

#include "station/store/import_lock.h"
#include "station/store/unit_store.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// Merges records into the data files of a unit of the locked data folder; see StoreWriter::Merge. The lock
/// has no problem.
///
/// The unit's new folder is built beside the data, in `.incoming`, and takes the old one's place in one step,
/// so that readers, and whoever comes after a crash, find either the old or the new one. Files that are not
/// data files move along, those of the demo are dropped. A file that can't be read is an error, because it
/// may hold any records; so is a link in place of a folder or file that would be replaced.
MergeOutcome MergeIntoUnit(const ImportLock& lock, std::string_view unitId,
                           std::span<const WireRecord> records);

}  // namespace pallomir::station
