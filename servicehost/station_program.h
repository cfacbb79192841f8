#pragma once

#include <filesystem>
#include <string>

namespace pallomir::servicehost {

struct StationSearch {
  std::filesystem::path station;  ///< absolute
  std::string problem;            ///< not empty: none was found, and why
};

/// Looks for pallomir-station: $PALLOMIR_STATION (nothing else, when it is set), then beside the application
/// folder that holds `hostFolder`, then in the application folder, then in PATH.
StationSearch FindStation(const std::filesystem::path& hostFolder);

/// Asks the program for its version. What is wrong with it; empty when it runs.
std::string CheckStation(const std::filesystem::path& station);

}  // namespace pallomir::servicehost
