#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "station/store/import_lock.h"
#include "station/store/position_source.h"

namespace pallomir::station {

// What demo units report is made anew for whoever asks. For searches, which look into files alone, it is also
// kept in files: "20261122-120000-demo.dat". A folder with such files and nothing else is no stored unit, and
// in other folders they count for nothing.

/// Whether a file of that name was made by KeepDemoRecords.
bool IsDemoFileName(std::string_view name);

/// Whether the folder has files of the demo and nothing else.
bool IsDemoFolder(const std::filesystem::path& folder);

/// See StoreWriter::KeepDemo. Every file is whole at each moment. The lock has no problem.
std::string KeepDemoRecords(const ImportLock& lock, std::string_view unitId, PackedWindow window,
                            std::span<const WireRecord> records, std::uint32_t oldest);

}  // namespace pallomir::station
