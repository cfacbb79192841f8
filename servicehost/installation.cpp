#include "servicehost/installation.h"

#include <sstream>
#include <vector>

#include "base/whole_file.h"
#include "servicehost/record_file.h"
#include "servicehost/user_folders.h"

namespace pallomir::servicehost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxSettings = 64 * 1024;

constexpr char kHead[] =
    "# The settings of the installed Data Server. A change counts from the next start.\n\n";

fs::path InstallationFile() { return ServiceFolder() / "installation.ini"; }

// What stands before "=", without the blanks that the station allows around it.
std::string_view KeyOf(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  line = line.substr(0, std::min(line.find('='), line.size()));
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

// The file with the line of `key` set to `value`.
std::string WithValue(const std::string& text, const std::string& key, const std::string& value) {
  std::istringstream lines(text);
  std::string result;
  bool isSet = false;
  for (std::string line; std::getline(lines, line);) {
    const bool isKey = KeyOf(line) == key;
    if (isKey && isSet) continue;
    result += (isKey ? key + "=" + value : line) + "\n";
    isSet = isSet || isKey;
  }
  return isSet ? result : result + key + "=" + value + "\n";
}

// The folder in which the station looks for its own files: that of the program itself, not of a link to it.
fs::path StationFolder(const fs::path& station) {
  std::error_code error;
  const fs::path program = fs::canonical(station, error);
  return (error ? station : program).parent_path();
}

std::variant<station::Options, std::string> Parse(const std::vector<std::string>& arguments,
                                                  const fs::path& station) {
  const auto parsed = station::ParseCommandLine(arguments, StationFolder(station));
  if (const auto* nothing = std::get_if<station::NothingToRun>(&parsed)) return nothing->text;
  return std::get<station::CommandLine>(parsed).options;
}

}  // namespace

fs::path SettingsFile() { return ServiceFolder() / "station.ini"; }
fs::path PidFile() { return ServiceFolder() / "service.pid"; }
fs::path StationLogFile() { return ServiceFolder() / "station.log"; }
fs::path LockFile() { return ServiceFolder() / "service.lock"; }
fs::path SupervisorLockFile() { return ServiceFolder() / "supervisor.lock"; }

std::optional<Installation> ReadInstallation() {
  Record record = ReadRecord(InstallationFile());
  if (record["Station"].empty()) return std::nullopt;
  return Installation{record["Station"],
                      record["Manager"] == "systemd" ? Manager::kSystemd : Manager::kSupervised,
                      record["Lingering"] == "yes"};
}

std::error_code WriteInstallation(const Installation& installation) {
  return WriteRecord(InstallationFile(),
                     {{"Station", installation.station.string()},
                      {"Manager", installation.manager == Manager::kSystemd ? "systemd" : "supervised"},
                      {"Lingering", installation.isLingering ? "yes" : "no"}});
}

void RemoveInstallation() {
  fs::path keptLog = StationLogFile();
  keptLog += ".1";
  std::error_code ignored;
  for (const fs::path& file :
       {InstallationFile(), PidFile(), StationLogFile(), keptLog, SupervisorLockFile(), LockFile()})
    fs::remove(file, ignored);
  fs::remove(ServiceFolder(), ignored);
}

std::error_code EnsureSettings(const fs::path& station) {
  std::error_code error;
  if (fs::exists(SettingsFile(), error)) return {};
  std::string text = ReadWholeFile(StationFolder(station) / "station.ini", kMaxSettings, error).value_or("");
  const auto options = Parse({}, station);
  // Shipped settings with a fault are taken over as they are: the complaint then names the place.
  if (const auto* valid = std::get_if<station::Options>(&options)) {
    const fs::path folder = StationFolder(station);
    const auto spelledOut = [&](const fs::path& path) { return (folder / path).lexically_normal().string(); };
    text = WithValue(text, "Data", spelledOut(valid->data));
    // The web site beside the station is found where the station is, also after a move.
    if (valid->webRoot != folder / "web") text = WithValue(text, "WebRoot", spelledOut(valid->webRoot));
  }
  return ReplaceFile(SettingsFile(), kHead + WithValue(text, "Demo", "off"));
}

std::variant<station::Options, std::string> ReadSettings(const Installation& installation) {
  std::vector<std::string> arguments = StationCommand(installation);
  arguments.erase(arguments.begin());
  return Parse(arguments, installation.station);
}

std::vector<std::string> StationCommand(const Installation& installation) {
  return {installation.station.string(), "--config", SettingsFile().string()};
}

}  // namespace pallomir::servicehost
