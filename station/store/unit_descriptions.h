#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "station/store/import_lock.h"

namespace pallomir::station {

/// Unit ID to description.
using UnitDescriptions = std::map<std::string, std::string, std::less<>>;

/// The text without what the client's unit list has no room for: "~", quotes, control characters, blanks at
/// both ends, and all behind the first 80 bytes (whole UTF-8 characters).
std::string CleanDescription(std::string_view text);

/// From `descriptions.txt` in the data folder: an ID, a blank and the description a line. Lines that are not
/// like that are skipped; a missing file has none. Where there is one that can't be read, `problem` says so.
UnitDescriptions ReadDescriptions(const std::filesystem::path& dataFolder, std::string& problem);

/// Sets one unit's description in the file and leaves its other lines alone. An error message, or nothing.
std::string WriteDescription(const ImportLock& lock, std::string_view unitId, std::string_view description);

/// Every unit as ID, blank, description, a line each; or as the one text that the client stores: for each an
/// X (it is enabled), the ID, the description and "~".
std::string UnitLines(const std::vector<std::string>& unitIds, const UnitDescriptions& descriptions);
std::string ClientUnitList(const std::vector<std::string>& unitIds, const UnitDescriptions& descriptions);

}  // namespace pallomir::station
