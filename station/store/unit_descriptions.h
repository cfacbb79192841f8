#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "station/store/import_lock.h"

namespace pallomir::station {

/// Unit ID to description.
using UnitDescriptions = std::map<std::string, std::string, std::less<>>;

/// Reads `descriptions.txt` in the data folder: a line for each unit, with its ID, a blank and the
/// description, which is cleaned. Other lines are skipped; where there is no file, there are no descriptions.
/// `problem` says why a file that is there can't be read; otherwise it is left as it is.
UnitDescriptions ReadDescriptions(const std::filesystem::path& dataFolder, std::string& problem);

/// Sets one unit's description in the file and keeps its other lines. Returns an error message, or an empty
/// text.
std::string WriteDescription(const ImportLock& lock, std::string_view unitId, std::string_view description);

}  // namespace pallomir::station
