#include "station/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>

#include "base/number_format.h"
#include "station/common/text.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// Below, the probe's port would be 0.
constexpr int kLowestPortBase = 3;
constexpr int kHighestPort = 65535;

constexpr std::string_view kBlanks = " \t\r";

const std::map<std::string, VisitsFor> kVisitsFor{
    {"loopback", VisitsFor::kThisComputer}, {"everyone", VisitsFor::kEveryone}, {"off", VisitsFor::kNobody}};

// "LocatorPort" is the option --locator-port.
std::string OptionName(std::string_view key) {
  std::string name;
  for (const char c : key) {
    const bool isCapital = std::isupper(static_cast<unsigned char>(c)) != 0;
    if (isCapital && !name.empty()) name += '-';
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return name;
}

/// Reads station.ini: each line is Key=Value, where the value is the rest of the line. Empty lines and lines
/// that begin with # are skipped.
class StationIni : public CLI::Config {
 public:
  explicit StationIni(const CLI::App& app) : app_(app) {}

  std::string to_config(const CLI::App*, bool, bool, std::string) const override { return {}; }

  std::vector<CLI::ConfigItem> from_config(std::istream& input) const override {
    std::vector<CLI::ConfigItem> items;
    int number = 0;
    for (std::string line; std::getline(input, line);) {
      ++number;
      const std::string_view text = Trimmed(line, kBlanks);
      if (text.empty() || text[0] == '#') continue;
      const std::string quoted = ": " + std::string(text);
      const std::size_t equals = text.find('=');
      if (equals == text.npos || equals == 0)
        throw CLI::ConversionError("line " + std::to_string(number) + " is not Key=Value" + quoted);
      CLI::ConfigItem item;
      item.name = OptionName(Trimmed(text.substr(0, equals), kBlanks));
      item.inputs = {std::string(Trimmed(text.substr(equals + 1), kBlanks))};
      const CLI::Option* option = app_.get_option_no_throw("--" + item.name);
      if (option == nullptr || !option->get_configurable())
        throw CLI::ConversionError("line " + std::to_string(number) + " has an unknown key" + quoted);
      if (!item.inputs.front().empty()) items.push_back(std::move(item));  // an empty value is the default
    }
    return items;
  }

 private:
  const CLI::App& app_;
};

// What the programs share.
fs::path SharedFolder() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value != nullptr ? value : "");
  };
  const std::string shared = variable("XDG_DATA_HOME");
  return (shared.empty() ? fs::path(variable("HOME")) / ".local/share" : fs::path(shared)) / "pallomir";
}

// Devices have their ID printed on them in either case; the station has it in upper case.
std::string TakeUnitId(std::string& text) {
  std::ranges::transform(text, text.begin(),
                         [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return IsUnitId(text) ? "" : text + " is not a unit ID: 12 characters of 0-9 and A-F";
}

std::string CheckOnlineMap(const std::string& text) {
  return ParseOnlineMap(text) ? "" : "give an address with {z}, {x} and {y}, a space, and its attribution";
}

void AddOptions(CLI::App& app, Options& options) {
  const CLI::Range port(1, kHighestPort), portBase(kLowestPortBase, kHighestPort);
  app.add_option("--address", options.address, "IPv4 address to listen on, 0.0.0.0 for all")
      ->check(CLI::ValidIPV4)
      ->capture_default_str();
  app.add_option("--advertised-address", options.advertisedAddress,
                 "IPv4 address that clients are told; default: the one they asked at")
      ->check(CLI::ValidIPV4);
  app.add_option("--locator-port", options.locatorPort, "UDP port of the locator")
      ->check(port)
      ->capture_default_str();
  app.add_option("--port-base", options.portBase, "TCP ports of the Base Server: this less 2 and less 1")
      ->check(portBase)
      ->capture_default_str();
  app.add_option("--web-port", options.webPort, "TCP port of the web site")
      ->check(port)
      ->capture_default_str();
  app.add_option("--web-root", options.webRoot, "folder of the web site's files")->capture_default_str();
  app.add_option("--data", options.data, "data folder: a folder of data files for each unit")
      ->capture_default_str();
  app.add_option("--demo", options.isDemoOn, "the nine demo units: on or off")->default_str("on");
  app.add_option_function<std::string>(
         "--visits", [&options](const std::string& who) { options.visits = kVisitsFor.at(who); },
         "who may ask the web site when units were where: this computer (loopback), everyone, or off")
      ->check(CLI::IsMember(&kVisitsFor))
      ->default_str("loopback");
  app.add_option_function<std::string>(
         "--online-map", [&options](const std::string& text) { options.onlineMap = ParseOnlineMap(text); },
         "address of an online map's tiles with {z}, {x} and {y}, a space, and its attribution; default: "
         "none")
      ->check(CLI::Validator(CheckOnlineMap, "MAP"));
}

CLI::App* AddImport(CLI::App& app, ImportCommand& command) {
  CLI::App* import = app.add_subcommand("import", "Take the tracks of GPX files into the data folder");
  import->add_option("--unit", command.unitId, "ID of the unit: 12 characters of 0-9 and A-F, in either case")
      ->required()
      ->transform(CLI::Validator(TakeUnitId, "ID"));
  import->add_option("--description", command.description, "name of the unit; default: keep, or the file's");
  import->add_flag("--today", command.toToday,
                   "move the recording by whole days, so that its last day (UTC) is today's local date");
  import->add_option("files", command.files, "GPX files, all of this unit")->required();
  return import;
}

CLI::App* AddUnits(CLI::App& app, UnitsCommand& command) {
  CLI::App* units = app.add_subcommand("units", "List the units of the data folder");
  units->add_flag("--client-list", command.asClientList, "as one text in the form that the client stores");
  return units;
}

// "45.07,7.686" in degrees.
std::optional<Place> ParsePlace(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == text.npos) return std::nullopt;
  const auto latitude = ParseNumber(text.substr(0, comma)), longitude = ParseNumber(text.substr(comma + 1));
  if (!latitude || !longitude || std::fabs(*latitude) > 90 || std::fabs(*longitude) > 180)
    return std::nullopt;
  return Place{*latitude, *longitude};
}

std::string CheckPlace(const std::string& text) {
  return ParsePlace(text) ? ""
                          : text + " is no place: give latitude and longitude in degrees, as 45.07,7.686";
}

std::string CheckMoment(const std::string& text) {
  return ParseMoment(text, false) ? "" : text + " is no time: give 2026-11-22 or 2026-11-22T15:04:05Z";
}

void AddPlaceOfVisits(CLI::App& visits, VisitsCommand& command) {
  CLI::Option_group* place = visits.add_option_group("where", "one of");
  CLI::Option* at = place
                        ->add_option_function<std::string>(
                            "--at", [&command](const std::string& text) { command.at = ParsePlace(text); },
                            "around a place: latitude and longitude in degrees")
                        ->check(CLI::Validator(CheckPlace, "LAT,LNG"));
  place->add_option("--zone", command.zone, "in a zone: its dotted number")->type_name("SECTION");
  place->require_option(1);
  CLI::Option* zoom =
      visits.add_option("--zoom", command.zoom, "with --at: as near as a click on the map at this zoom")
          ->check(CLI::Range(0, kNearestZoom))
          ->needs(at)
          ->capture_default_str();
  visits.add_option("--radius", command.radius, "with --at: metres to each side instead")
      ->check(CLI::Range(kShortestRadius, kLongestRadius))
      ->needs(at)
      ->excludes(zoom)
      ->type_name("METRES");
  visits.add_option("--zones", command.zones, "zone file")->capture_default_str();
}

CLI::App* AddVisits(CLI::App& app, VisitsCommand& command) {
  constexpr std::size_t kHighestLimit = 1'000'000;
  CLI::App* visits = app.add_subcommand("visits", "List when units were at a place, newest first");
  AddPlaceOfVisits(*visits, command);
  visits->add_option("--unit", command.unitIds, "ID of a unit, may be repeated; default: all")
      ->transform(CLI::Validator(TakeUnitId, "ID"));
  visits
      ->add_option_function<std::string>(
          "--from", [&command](const std::string& text) { command.from = ParseMoment(text, false); },
          "first day or moment, UTC")
      ->check(CLI::Validator(CheckMoment, "TIME"));
  visits
      ->add_option_function<std::string>(
          "--to", [&command](const std::string& text) { command.until = ParseMoment(text, true); },
          "last day or moment, UTC")
      ->check(CLI::Validator(CheckMoment, "TIME"));
  visits->add_option("--limit", command.limit, "how many at most")
      ->check(CLI::Range(std::size_t{1}, kHighestLimit))
      ->capture_default_str();
  const std::string usual = "as lines of CSV, the default";
  CLI::Option* csv = visits->add_flag("--csv", usual);
  visits->add_flag("--json", command.asJson, "as an array of JSON")->excludes(csv);
  return visits;
}

}  // namespace

std::variant<CommandLine, NothingToRun> ParseCommandLine(std::vector<std::string> arguments,
                                                         const fs::path& programFolder) {
  Options options;
  options.webRoot = programFolder / "web";
  options.data = SharedFolder() / "Data";
  ImportCommand importCommand;
  UnitsCommand unitsCommand;
  VisitsCommand visitsCommand;
  visitsCommand.zones = SharedFolder() / "ZoneMenus.txt";

  CLI::App app("Finds, keeps and streams the positions of mobile units, and serves the map page.",
               "pallomir-station");
  app.set_version_flag("--version", PALLOMIR_VERSION);
  app.config_formatter(std::make_shared<StationIni>(app));
  app.set_config("--config", (programFolder / "station.ini").string(), "file of these options as Key=Value");
  app.allow_config_extras(CLI::config_extras_mode::error);
  app.require_subcommand(0, 1)->fallthrough();
  AddOptions(app, options);
  CLI::App* import = AddImport(app, importCommand);
  CLI::App* units = AddUnits(app, unitsCommand);
  CLI::App* visits = AddVisits(app, visitsCommand);

  try {
    std::ranges::reverse(arguments);  // the library takes them from the back
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    std::ostringstream text, complaint;
    const int code = app.exit(error, text, complaint);
    return code == 0 ? NothingToRun{kDone, text.str()} : NothingToRun{kWrongOptions, complaint.str()};
  }
  CommandLine line{options, ServeCommand{}};
  if (import->parsed()) line.command = importCommand;
  if (units->parsed()) line.command = unitsCommand;
  if (visits->parsed()) line.command = visitsCommand;
  return line;
}

}  // namespace pallomir::station
