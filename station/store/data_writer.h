#pragma once

#include <span>
#include <string_view>

#include "station/store/import_lock.h"
#include "station/store/unit_store.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// Merges records, strictly ascending in time, into the data files of a unit of the locked data folder.
///
/// All or nothing: the unit's new folder is built whole beside the data, in `.incoming`, and takes the old
/// one's place in one step. Neither a reader nor a crash at any moment sees anything but the one or the
/// other. Foreign files move along. A file that can't be read may have any records, so it is an error, as is
/// a link where a folder or a file would be replaced.
MergeOutcome MergeIntoUnit(const ImportLock& lock, std::string_view unitId,
                           std::span<const WireRecord> records);

}  // namespace pallomir::station
