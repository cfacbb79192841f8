#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "station/import/importer.h"
#include "station/web/online_map.h"

namespace pallomir::station {

/// How the program ends.
enum ExitCode : int { kDone = 0, kFailed = 1, kWrongOptions = 2, kPortTaken = 3 };

/// What station.ini and the command line say; the command line wins. Addresses are IPv4 in dotted form.
struct Options {
  std::string address = "127.0.0.1";  ///< what every port is opened on
  std::string advertisedAddress;      ///< what the locator answers; empty = the address it was asked at
  std::uint16_t locatorPort = 2435;
  std::uint16_t portBase = 18801;  ///< P: the probe is on P - 2, the data on P - 1
  std::uint16_t webPort = 2480;
  std::filesystem::path webRoot;
  std::filesystem::path data;
  bool isDemoOn = true;
  std::optional<OnlineMap> onlineMap;
};

struct ServeCommand {};

struct UnitsCommand {
  bool asClientList = false;
};

struct CommandLine {
  Options options;
  std::variant<ServeCommand, ImportCommand, UnitsCommand> command;
};

/// Nothing to run: help was asked for (kDone), or something is wrong (kWrongOptions). `text` says it.
struct NothingToRun {
  ExitCode exitCode = kDone;
  std::string text;
};

/// `arguments` without the program's name. Defaults lie beside the executable, in `programFolder`:
/// station.ini (which need not be there) and the folder `web`.
std::variant<CommandLine, NothingToRun> ParseCommandLine(std::vector<std::string> arguments,
                                                         const std::filesystem::path& programFolder);

}  // namespace pallomir::station
