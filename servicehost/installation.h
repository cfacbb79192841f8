#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "station/options.h"

namespace pallomir::servicehost {

enum class Manager {
  kSystemd,    ///< a user service
  kSupervised  ///< a process of our own that watches the station
};

/// What was installed.
struct Installation {
  std::filesystem::path station;  ///< the program, absolute
  Manager manager = Manager::kSupervised;
  bool isLingering = false;  ///< systemd starts the service with the computer, not with the first login
};

/// The files of the service, all in ServiceFolder().
std::filesystem::path SettingsFile();
std::filesystem::path PidFile();
std::filesystem::path StationLogFile();
std::filesystem::path LockFile();
std::filesystem::path SupervisorLockFile();

/// Nothing when the service is not installed.
std::optional<Installation> ReadInstallation();
std::error_code WriteInstallation(const Installation& installation);

/// Removes everything but the user's settings. The folder goes too when nothing is left in it.
void RemoveInstallation();

/// Makes the settings of the service from the station.ini beside the station, with the demo units off and its
/// folders spelled out, relative ones from the station's: a service has another environment than the user's
/// shell. Existing ones are kept.
std::error_code EnsureSettings(const std::filesystem::path& station);

/// The options that the station will start with, or what is wrong with the settings.
std::variant<station::Options, std::string> ReadSettings(const Installation& installation);

/// What runs the station: the program and its arguments.
std::vector<std::string> StationCommand(const Installation& installation);

}  // namespace pallomir::servicehost
