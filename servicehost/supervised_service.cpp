#include "servicehost/supervised_service.h"

#include <fcntl.h>
#include <poll.h>

#include <cerrno>
#include <cstring>
#include <sstream>

#include "servicehost/listening.h"
#include "servicehost/pid_file.h"
#include "servicehost/spawn.h"
#include "servicehost/supervisor.h"
#include "servicehost/user_folders.h"

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kStartTime{10};
constexpr std::chrono::seconds kAnswerTime{3};
// The supervisor gives the station kStationPatience before it kills it.
constexpr std::chrono::seconds kSupervisorPatience = kStationPatience + std::chrono::seconds(4);

constexpr std::size_t kMaxReport = 4096;

enum class Stopped { kWasNotRunning, kStopped, kStillRunning };

// Whatever of the service runs: also a station that has lost its supervisor.
Stopped StopProcesses() {
  const ServiceProcesses processes = ReadProcesses();
  const auto supervisor = Running(processes.supervisor);
  bool hasEnded = !supervisor || supervisor->End(kSupervisorPatience);
  // It may have started another one since.
  const auto station = Running(ReadProcesses().station);
  hasEnded = (!station || station->End(kStationPatience)) && hasEnded;
  if (!hasEnded) return Stopped::kStillRunning;
  RemovePidFile();
  return supervisor || station ? Stopped::kStopped : Stopped::kWasNotRunning;
}

// Everything that the supervisor reports until it lets go of the pipe; nothing when it says nothing in time.
std::string AwaitReport(int stream) {
  const auto until = Clock::now() + kStartTime;
  std::string report;
  while (report.size() < kMaxReport) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd ready{stream, POLLIN, 0};
    const int count = left > 0 ? ::poll(&ready, 1, static_cast<int>(left)) : 0;
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    char buffer[1024];
    const ssize_t size = ::read(stream, buffer, sizeof buffer);
    if (size <= 0) break;
    report.append(buffer, static_cast<std::size_t>(size));
  }
  return report;
}

void SayReport(const std::string& report, Transcript& transcript) {
  if (report.empty())
    transcript.Say("The Data Server was not started: the station did not get ready in time.");
  std::istringstream lines(report);
  for (std::string line; std::getline(lines, line);) transcript.Say(line);
  transcript.Say("Its log tells more: " + StationLogFile().string());
}

}  // namespace

bool SupervisedService::IsRunning() {
  const ServiceProcesses processes = ReadProcesses();
  return Running(processes.supervisor) || Running(processes.station);
}

bool SupervisedService::Register(Installation&, Transcript& transcript) {
  transcript.Say("The Data Server is installed for the user " + UserName() + ".");
  transcript.Say("systemd does not run here, so it runs as a background process.");
  transcript.Say(
      "It does NOT start by itself after this computer restarts: choose \"Start\" in the menu then.");
  return true;
}

bool SupervisedService::Start(const Installation&, const station::Options& options, Transcript& transcript) {
  if (Running(ReadProcesses().supervisor)) return ReportRunning(options, transcript);
  if (StopProcesses() == Stopped::kStopped)
    transcript.Say("A station that had lost its supervisor was stopped first.");

  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    transcript.Say(std::string("The Data Server was not started: ") + std::strerror(errno));
    return false;
  }
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const pid_t supervisor = Spawn({ProgramFile().string(), kSupervise}, writing.Get(), ProcessGroup::kSession);
  writing.Close();
  if (supervisor < 0) {
    transcript.Say(std::string("The Data Server was not started: ") + std::strerror(-supervisor));
    return false;
  }
  const std::string report = AwaitReport(reading.Get());
  if (report != kReadyReport) {
    SayReport(report, transcript);
  } else if (!AwaitAnswers(options, kAnswerTime)) {
    transcript.Say("The Data Server was started, but does not answer. It was stopped again.");
  } else {
    transcript.Say("The Data Server was started as a background process.");
    return true;
  }
  StopProcesses();
  return false;
}

bool SupervisedService::Stop(Transcript& transcript) {
  switch (StopProcesses()) {
    case Stopped::kStopped:
      transcript.Say("The Data Server was stopped.");
      return true;
    case Stopped::kWasNotRunning:
      transcript.Say("The Data Server was not running.");
      return true;
    case Stopped::kStillRunning:
      break;
  }
  transcript.Say("The Data Server could not be stopped: it does not end, not even when it is killed.");
  return false;
}

bool SupervisedService::Unregister(Transcript& transcript) { return Stop(transcript); }

}  // namespace pallomir::servicehost
