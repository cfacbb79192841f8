#include "servicehost/station_program.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>

#include "servicehost/run_program.h"

namespace pallomir::servicehost {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kVersionTime{10};

bool IsProgram(const fs::path& file) {
  std::error_code ignored;
  return fs::is_regular_file(file, ignored) && ::access(file.c_str(), X_OK) == 0;
}

// Such a name can stand in no settings file and in no unit file.
bool HasControlCharacters(const std::string& path) {
  return std::ranges::any_of(path, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

std::optional<fs::path> FindInPath(const char* path) {
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    const fs::path file = fs::path(folder) / "pallomir-station";
    if (file.is_absolute() && IsProgram(file)) return file;
  }
  return std::nullopt;
}

StationSearch Found(const fs::path& station) {
  const fs::path path = fs::absolute(station).lexically_normal();
  if (HasControlCharacters(path.string()))
    return {{}, "The folder of pallomir-station has control characters in its name: " + path.string()};
  return {path, ""};
}

}  // namespace

StationSearch FindStation(const fs::path& hostFolder) {
  const char* named = std::getenv("PALLOMIR_STATION");
  if (named != nullptr && *named != '\0')
    return IsProgram(named) ? Found(named)
                            : StationSearch{{}, "PALLOMIR_STATION names no program: " + std::string(named)};
  for (const char* place : {"../../pallomir-station/pallomir-station", "../pallomir-station/pallomir-station",
                            "../pallomir-station"})
    if (IsProgram(hostFolder / place)) return Found(hostFolder / place);
  if (const auto station = FindInPath(std::getenv("PATH"))) return Found(*station);
  return {{},
          "The program pallomir-station was not found: neither beside the folder " +
              hostFolder.parent_path().string() + ", nor in it, nor in PATH."};
}

std::string CheckStation(const fs::path& station) {
  const RunOutcome outcome = RunProgram({station.string(), "--version"}, kVersionTime);
  return outcome.Succeeded() ? "" : station.string() + " does not run: " + outcome.Reason();
}

}  // namespace pallomir::servicehost
