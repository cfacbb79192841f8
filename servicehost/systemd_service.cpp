#include "servicehost/systemd_service.h"

#include <cstdio>
#include <optional>
#include <sstream>

#include "base/whole_file.h"
#include "servicehost/listening.h"
#include "servicehost/record_file.h"
#include "servicehost/unit_file.h"
#include "servicehost/user_folders.h"

namespace pallomir::servicehost {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Stopping takes systemd at most the 10 s of the unit, and some.
constexpr std::chrono::seconds kCommandTime{20};
constexpr std::chrono::seconds kQuestionTime{5};
constexpr std::chrono::seconds kStartTime{10};
constexpr std::chrono::milliseconds kGlance{300};

std::string UnitName() { return std::string(kServiceName) + ".service"; }

RunOutcome Run(std::vector<std::string> command, std::chrono::seconds limit, Transcript& transcript) {
  const RunOutcome outcome = RunProgram(command, limit);
  std::string line = "ran";
  for (const std::string& word : command) line += " " + word;
  transcript.Detail(line + ": exit code " + std::to_string(outcome.exitCode) + " " + outcome.problem);
  std::istringstream output(outcome.output);
  for (std::string text; std::getline(output, text);) transcript.Detail("  " + text);
  return outcome;
}

RunOutcome Systemctl(std::vector<std::string> words, Transcript& transcript,
                     std::chrono::seconds limit = kCommandTime) {
  words.insert(words.begin(), {"systemctl", "--user", "--no-pager", "--no-ask-password"});
  return Run(std::move(words), limit, transcript);
}

struct State {
  bool isActive = false;
  bool isTried = false;    ///< active, or on the way to it
  bool hasFailed = false;  ///< since it was started; it may be tried again
};

State AskState(Transcript& transcript) {
  Record state = ParseRecord(
      Systemctl({"show", UnitName(), "--property=ActiveState,SubState,NRestarts"}, transcript, kQuestionTime)
          .output);
  const std::string& active = state["ActiveState"];
  const std::string& restarts = state["NRestarts"];
  const bool isActive = active == "active";
  const bool isTried = isActive || active == "activating" || active == "reloading";
  const bool wasRestarted = !restarts.empty() && restarts != "0";
  return {isActive, isTried, !isTried || state["SubState"] == "auto-restart" || wasRestarted};
}

bool AwaitStation(const station::Options& options, Transcript& transcript) {
  const auto until = Clock::now() + kStartTime;
  while (Clock::now() < until) {
    const bool isAnswering = AwaitAnswers(options, kGlance);
    const State state = AskState(transcript);
    if (state.hasFailed) return false;
    if (isAnswering && state.isActive) return true;
  }
  return false;
}

void SayLastWords(Transcript& transcript) {
  const RunOutcome journal = Run(
      {"journalctl", "--user", "--unit", UnitName(), "--lines=4", "--output=cat", "--no-pager", "--quiet"},
      kQuestionTime, transcript);
  std::istringstream lines(journal.Succeeded() ? journal.output : "");
  if (lines.peek() != EOF) transcript.Say("Its last words:");
  for (std::string line; std::getline(lines, line);) transcript.Say("  " + line);
  transcript.Say("The command \"journalctl --user -u " + UnitName() + "\" shows more.");
}

void SayLingering(bool isGranted, const std::string& reason, Transcript& transcript) {
  if (isGranted) {
    transcript.Say("It starts by itself together with this computer (lingering was granted).");
    return;
  }
  transcript.Say(
      "It starts by itself when you log in, but not together with this computer: lingering was not granted "
      "(" +
      reason + ").");
  transcript.Say("An administrator can grant it with: loginctl enable-linger " + UserName());
}

// Whether it ran; nothing when it could not be stopped.
std::optional<bool> StopUnit(Transcript& transcript) {
  const bool wasTried = AskState(transcript).isTried;
  // Nothing more will be tried either.
  const RunOutcome outcome = Systemctl({"stop", UnitName()}, transcript);
  if (!outcome.Succeeded()) {
    transcript.Say("systemd did not stop the Data Server: " + outcome.Reason());
    return std::nullopt;
  }
  transcript.Say(wasTried ? "The Data Server was stopped." : "The Data Server was not running.");
  return wasTried;
}

fs::path EnabledLink() { return UnitFolder() / "default.target.wants" / UnitName(); }

void RemoveUnit() {
  std::error_code ignored;
  fs::remove(EnabledLink(), ignored);
  fs::remove(SystemdService::UnitFile(), ignored);
}

}  // namespace

bool SystemdService::Answers(Transcript& transcript) {
  // What it prints may hold secrets and stays out of the log.
  const RunOutcome outcome = RunProgram({"systemctl", "--user", "show-environment"}, kQuestionTime);
  transcript.Detail(outcome.Succeeded() ? "systemd answers" : "no systemd: " + outcome.Reason());
  return outcome.Succeeded();
}

fs::path SystemdService::UnitFile() { return UnitFolder() / UnitName(); }

bool SystemdService::Register(Installation& installation, Transcript& transcript) {
  const std::string station = installation.station.string();
  if (station.find_first_of("\"'\\") != station.npos) {
    transcript.Say("systemd runs no program whose path has a quote or a backslash: " + station);
    return false;
  }
  std::error_code error;
  const bool wasThere = fs::exists(UnitFile(), error);
  fs::create_directories(UnitFolder(), error);
  if ((error = ReplaceFile(UnitFile(), UnitText(StationCommand(installation))))) {
    transcript.Say("The unit file " + UnitFile().string() + " can't be written: " + error.message() + ".");
    return false;
  }
  for (const char* command : {"daemon-reload", "enable"}) {
    std::vector<std::string> words{command};
    if (words[0] == "enable") words.push_back(UnitName());
    const RunOutcome outcome = Systemctl(words, transcript);
    if (outcome.Succeeded()) continue;
    transcript.Say("systemd did not take the service: " + outcome.Reason());
    if (!wasThere) RemoveUnit();
    return false;
  }
  const RunOutcome lingering =
      Run({"loginctl", "--no-ask-password", "enable-linger"}, kQuestionTime, transcript);
  installation.isLingering = lingering.Succeeded();
  transcript.Say("The Data Server is installed as a systemd service of the user " + UserName() + ".");
  SayLingering(lingering.Succeeded(), lingering.Reason(), transcript);
  return true;
}

bool SystemdService::Start(const Installation&, const station::Options& options, Transcript& transcript) {
  if (AskState(transcript).isActive) return ReportRunning(options, transcript);
  const std::string taken = FindTakenPort(options);
  if (!taken.empty()) {
    transcript.Say("The Data Server was not started: " + taken + ".");
    return false;
  }
  Systemctl({"reset-failed", UnitName()}, transcript);  // earlier failures don't count
  const RunOutcome outcome = Systemctl({"start", UnitName()}, transcript);
  if (outcome.Succeeded() && AwaitStation(options, transcript)) {
    transcript.Say("The Data Server was started by systemd.");
    return true;
  }
  transcript.Say(outcome.Succeeded() ? "The Data Server was started, but did not come up."
                                     : "systemd did not start the Data Server: " + outcome.Reason());
  SayLastWords(transcript);
  Systemctl({"stop", UnitName()}, transcript);
  return false;
}

bool SystemdService::Stop(Transcript& transcript) {
  const std::optional<bool> wasRunning = StopUnit(transcript);
  if (wasRunning && *wasRunning)
    transcript.Say("It starts again with the next start of this computer or the next login.");
  return wasRunning.has_value();
}

bool SystemdService::Unregister(Transcript& transcript) {
  if (!Answers(transcript)) {
    RemoveUnit();
    transcript.Say(
        "systemd does not answer. The service will not start again, but a Data Server that runs now could "
        "not be stopped.");
    return false;
  }
  if (!StopUnit(transcript)) return false;
  const RunOutcome outcome = Systemctl({"disable", UnitName()}, transcript);
  if (!outcome.Succeeded()) transcript.Detail("disable: " + outcome.Reason());
  RemoveUnit();
  Systemctl({"daemon-reload"}, transcript);
  return true;
}

}  // namespace pallomir::servicehost
