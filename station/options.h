#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "station/import/importer.h"
#include "station/visits.h"
#include "station/web/online_map.h"

namespace pallomir::station {

/// The program's exit codes.
enum ExitCode : int { kDone = 0, kFailed = 1, kWrongOptions = 2, kPortTaken = 3 };

/// Whose questions the web site answers when units were where.
enum class VisitsFor { kThisComputer, kEveryone, kNobody };

/// What station.ini and the command line say; the command line wins. Addresses are IPv4 in dotted form, ports
/// 1 to 65535.
struct Options {
  std::string address = "127.0.0.1";  ///< of every port
  std::string advertisedAddress;      ///< what the locator answers; empty = the address it was asked at
  std::uint16_t locatorPort = 2435;
  std::uint16_t portBase = 18801;  ///< P, at least 3: the probe is on P - 2, the data on P - 1
  std::uint16_t webPort = 2480;
  std::filesystem::path webRoot;  ///< the folder of the web site's files
  std::filesystem::path data;     ///< where the store is
  bool isDemoOn = true;
  VisitsFor visits = VisitsFor::kThisComputer;
  std::optional<OnlineMap> onlineMap;
};

struct ServeCommand {};

struct UnitsCommand {
  bool asClientList = false;
};

struct CommandLine {
  Options options;
  std::variant<ServeCommand, ImportCommand, UnitsCommand, VisitsCommand> command;
};

/// There is nothing to run: help was asked for (kDone), or something is wrong (kWrongOptions). `text` is what
/// to print, in whole lines.
struct NothingToRun {
  ExitCode exitCode = kDone;
  std::string text;
};

/// Reads `arguments`, without the program's name, and station.ini. Unless they say otherwise, station.ini
/// (which need not exist) and the web site's folder `web` are in `programFolder`, which is the executable's.
std::variant<CommandLine, NothingToRun> ParseCommandLine(std::vector<std::string> arguments,
                                                         const std::filesystem::path& programFolder);

}  // namespace pallomir::station
