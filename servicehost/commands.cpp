#include "servicehost/commands.h"

#include <memory>
#include <optional>

#include "servicehost/installation.h"
#include "servicehost/listening.h"
#include "servicehost/service_manager.h"
#include "servicehost/station_program.h"
#include "servicehost/supervised_service.h"
#include "servicehost/systemd_service.h"

namespace pallomir::servicehost {
namespace {

namespace fs = std::filesystem;

constexpr char kNotInstalled[] = "The Data Server is not installed for this user.";

std::unique_ptr<ServiceManager> MakeManager(Manager manager) {
  if (manager == Manager::kSystemd) return std::make_unique<SystemdService>();
  return std::make_unique<SupervisedService>();
}

bool Fail(const std::string& sentence, Transcript& transcript) {
  transcript.Say(sentence);
  return false;
}

void SayWhere(const Installation& installation, const station::Options& options, Transcript& transcript) {
  transcript.Say("");
  transcript.Say("Program: " + installation.station.string());
  transcript.Say("Ports: " + PortsText(options));
  transcript.Say("Map page: " + MapPageText(options));
  transcript.Say("Data folder: " + options.data.string());
  transcript.Say("Settings: " + SettingsFile().string() + " (a change counts from the next start)");
  if (options.isDemoOn) transcript.Say("The demo units are on.");
  if (options.address.starts_with("127."))
    transcript.Say("Only this computer can reach it. Address=0.0.0.0 in the settings opens it to others.");
}

std::optional<station::Options> Settings(const Installation& installation, Transcript& transcript) {
  const auto settings = ReadSettings(installation);
  if (const auto* options = std::get_if<station::Options>(&settings)) return *options;
  transcript.Say("The settings in " + SettingsFile().string() + " have a fault. Correct them and try again:");
  transcript.Say(std::get<std::string>(settings));
  return std::nullopt;
}

// What is still running after the service was stopped: a station that has lost its files, or one of the
// user's own. Empty when the ports are free, or nobody knows which they are.
std::string StillRunning(const std::optional<Installation>& installation) {
  std::error_code ignored;
  if (!fs::exists(SettingsFile(), ignored)) return "";
  const auto settings = ReadSettings(installation.value_or(Installation()));
  const auto* options = std::get_if<station::Options>(&settings);
  const std::string port = options != nullptr ? FindUsedPort(*options) : "";
  if (port.empty()) return "";
  return port +
         " is still in use: a station runs that the service does not know of. If you did not start it "
         "yourself, end the program pallomir-station.";
}

// The one that was chosen before stays unless systemd came.
bool ChooseManager(const std::optional<Installation>& before, Installation& installation,
                   Transcript& transcript) {
  const bool isSystemdHere = SystemdService::Answers(transcript);
  const bool wasSystemd = before && before->manager == Manager::kSystemd;
  if (wasSystemd && !isSystemdHere)
    return Fail(
        "The Data Server is installed as a systemd service, but systemd does not answer now. "
        "Nothing was changed.",
        transcript);
  installation.manager = isSystemdHere ? Manager::kSystemd : Manager::kSupervised;
  // Two stations would fight for the ports.
  return !isSystemdHere || !SupervisedService::IsRunning() || SupervisedService().Stop(transcript);
}

}  // namespace

bool Install(const fs::path& hostFolder, Transcript& transcript) {
  const StationSearch search = FindStation(hostFolder);
  if (!search.problem.empty()) return Fail("Not installed. " + search.problem, transcript);
  if (const std::string problem = CheckStation(search.station); !problem.empty())
    return Fail("Not installed. " + problem, transcript);
  if (const auto error = EnsureSettings(search.station))
    return Fail("Not installed. " + SettingsFile().string() + " can't be written: " + error.message(),
                transcript);

  const auto before = ReadInstallation();
  Installation installation;
  installation.station = search.station;
  const auto options = Settings(installation, transcript);
  if (!options || !ChooseManager(before, installation, transcript)) return false;
  if (before) transcript.Say("The Data Server was installed before. Its settings and its data were kept.");
  const auto manager = MakeManager(installation.manager);
  if (!manager->Register(installation, transcript)) return false;
  if (const auto error = WriteInstallation(installation)) {
    if (!before) manager->Unregister(transcript);
    return Fail("Not installed. The folder of the settings can't be written: " + error.message(), transcript);
  }
  std::error_code ignored;
  fs::create_directories(options->data, ignored);
  SayWhere(installation, *options, transcript);
  return true;
}

bool Start(Transcript& transcript) {
  const auto installation = ReadInstallation();
  if (!installation)
    return Fail(std::string(kNotInstalled) + " Choose \"Install\" in the menu first.", transcript);
  const auto options = Settings(*installation, transcript);
  if (!options) return false;
  if (const std::string problem = CheckStation(installation->station); !problem.empty()) {
    transcript.Say("The Data Server was not started. " + problem);
    return Fail("If the program was moved, choose \"Install\" in the menu again.", transcript);
  }
  if (!MakeManager(installation->manager)->Start(*installation, *options, transcript))
    return Fail("Remove the cause, then choose \"Start\" again. Addresses and ports stand in " +
                    SettingsFile().string(),
                transcript);
  SayWhere(*installation, *options, transcript);
  return true;
}

bool Stop(Transcript& transcript) {
  const auto installation = ReadInstallation();
  if (!installation) transcript.Say(kNotInstalled);
  if (!MakeManager(installation ? installation->manager : Manager::kSupervised)->Stop(transcript))
    return false;
  if (const std::string still = StillRunning(installation); !still.empty()) transcript.Say("But " + still);
  return true;
}

bool Uninstall(Transcript& transcript) {
  const auto installation = ReadInstallation();
  std::error_code ignored;
  // A unit may have been left by an installation that did not come to its end.
  const bool hasUnit = fs::exists(SystemdService::UnitFile(), ignored);
  const bool isSystemd = hasUnit || (installation && installation->manager == Manager::kSystemd);
  if (!installation && !hasUnit) transcript.Say(kNotInstalled);
  bool isGone = !isSystemd || SystemdService().Unregister(transcript);
  // Whatever the installation says, nothing may run without it.
  if (!isSystemd || SupervisedService::IsRunning())
    isGone = SupervisedService().Unregister(transcript) && isGone;
  // Where systemd does not answer the unit has gone all the same.
  if (!isGone && (SupervisedService::IsRunning() || fs::exists(SystemdService::UnitFile(), ignored)))
    return Fail("It stays installed.", transcript);
  const std::string still = StillRunning(installation);
  RemoveInstallation();
  if (!still.empty())
    isGone = Fail("The Data Server's files were removed, but " + still, transcript);
  else if (installation)
    transcript.Say("The Data Server was uninstalled. The recorded positions were kept.");
  if (fs::exists(SettingsFile(), ignored))
    transcript.Say("Its settings were kept for another installation: " + SettingsFile().string());
  if (installation && installation->isLingering) {
    transcript.Say(
        "Other services of your account may still start with this computer. If you want none: loginctl "
        "disable-linger");
  }
  return isGone;
}

}  // namespace pallomir::servicehost
