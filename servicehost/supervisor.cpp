#include "servicehost/supervisor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <string>

#include "servicehost/bounded_log.h"
#include "servicehost/pid_file.h"
#include "servicehost/restart_policy.h"
#include "servicehost/spawn.h"
#include "servicehost/supervisor_lock.h"
#include "servicehost/user_folders.h"

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMaxLog = 1024 * 1024;
constexpr std::size_t kMaxLine = 2000;
constexpr std::size_t kLastWords = 4;
constexpr char kReadyLine[] = "pallomir-station ready";

std::string EndingText(int status) {
  return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                             : "exit code " + std::to_string(WEXITSTATUS(status));
}

class Supervisor {
 public:
  explicit Supervisor(const Installation& installation)
      : command_(StationCommand(installation)), log_(StationLogFile(), kMaxLog) {}

  int Run();
  void ReportFailedStart(const std::string& why);

 private:
  bool Launch();
  void FollowStation();
  void TakeSignals();
  bool TakeOutput();
  void TakeLine(const std::string& line);
  bool PauseUnlessTold(std::chrono::seconds delay);
  void Report(const std::string& text);

  std::vector<std::string> command_;
  BoundedLog log_;
  RestartPolicy policy_;
  Descriptor signals_;
  Descriptor output_;
  pid_t station_ = -1;  ///< -1 while none runs
  int status_ = 0;      ///< how the last one ended
  bool isStopping_ = false;
  bool wasReady_ = false;  ///< the first start has succeeded
  std::string partialLine_;
  std::deque<std::string> lastWords_;
};

int Supervisor::Run() {
  sigset_t handled;
  ::sigemptyset(&handled);
  for (const int number : {SIGTERM, SIGINT, SIGCHLD}) ::sigaddset(&handled, number);
  ::sigprocmask(SIG_BLOCK, &handled, nullptr);
  signals_ = Descriptor(::signalfd(-1, &handled, SFD_CLOEXEC | SFD_NONBLOCK));
  std::signal(SIGPIPE, SIG_IGN);  // who started us may have gone
  std::signal(SIGHUP, SIG_IGN);
  if (::chdir(HomeFolder().c_str()) != 0) log_.Write("supervisor: can't enter the home folder");

  int exitCode = 1;
  while (true) {
    const auto started = Clock::now();
    if (Launch()) FollowStation();
    if (isStopping_) {
      log_.Write("supervisor: stopped");
      exitCode = 0;
      break;
    }
    if (!wasReady_) {
      ReportFailedStart("the station ended with " + EndingText(status_));
      break;
    }
    if (WIFEXITED(status_) && WEXITSTATUS(status_) == 0) {
      log_.Write("supervisor: the station was told to end, it is not started again");
      exitCode = 0;
      break;
    }
    const auto ranFor = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - started);
    const auto delay = policy_.AfterFailure(ranFor);
    if (!delay) {
      log_.Write("supervisor: the station ended with " + EndingText(status_) + "; after " +
                 std::to_string(RestartPolicy::kMaxQuickFailures) +
                 " quick failures in a row it is given up");
      break;
    }
    log_.Write("supervisor: the station ended with " + EndingText(status_) + " and is started again in " +
               std::to_string(delay->count()) + " s");
    if (PauseUnlessTold(*delay)) {
      exitCode = 0;
      break;
    }
  }
  RemovePidFile();
  return exitCode;
}

// Starts the station and writes down who it is.
bool Supervisor::Launch() {
  int ends[2];
  status_ = 1 << 8;  // as an exit code of 1, where there is nothing to wait for
  lastWords_.clear();
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return false;
  output_ = Descriptor(ends[0]);
  const Descriptor writing(ends[1]);
  ::fcntl(writing.Get(), F_SETFL, 0);  // the station's end waits, as any output does
  station_ = Spawn(command_, writing.Get(), ProcessGroup::kOwn);
  if (station_ < 0) {
    TakeLine(command_[0] + ": " + std::strerror(-station_));
    station_ = -1;
    return false;
  }
  const std::error_code error = WriteProcesses({IdentityOf(::getpid()), IdentityOf(station_)});
  if (!error) return true;
  TakeLine("supervisor: can't write " + PidFile().string() + ": " + error.message());
  if (wasReady_) return true;
  // Nobody could stop what nobody knows.
  ::kill(station_, SIGKILL);
  ::waitpid(station_, &status_, 0);
  station_ = -1;
  return false;
}

void Supervisor::FollowStation() {
  Clock::time_point killAt = Clock::time_point::max();
  while (station_ > 0) {
    pollfd ready[] = {{signals_.Get(), POLLIN, 0}, {output_.Get(), POLLIN, 0}};
    int patience = -1;
    if (isStopping_ && killAt == Clock::time_point::max()) killAt = Clock::now() + kStationPatience;
    if (isStopping_) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(killAt - Clock::now()).count();
      if (left <= 0) ::kill(station_, SIGKILL);
      patience = left > 0 ? static_cast<int>(left) : 1000;
    }
    if (::poll(ready, 2, patience) < 0) continue;
    if (ready[1].revents != 0 && !TakeOutput()) output_.Close();
    if (ready[0].revents != 0) TakeSignals();
  }
  while (TakeOutput()) {
  }
  if (!partialLine_.empty()) TakeLine(std::exchange(partialLine_, ""));
  output_.Close();
}

void Supervisor::TakeSignals() {
  signalfd_siginfo info;
  while (::read(signals_.Get(), &info, sizeof info) == sizeof info) {
    if (info.ssi_signo == SIGCHLD) continue;
    isStopping_ = true;
    if (station_ > 0) ::kill(station_, SIGTERM);
  }
  if (station_ > 0 && ::waitpid(station_, &status_, WNOHANG) == station_) station_ = -1;
}

// False when there is nothing more to read now, or ever.
bool Supervisor::TakeOutput() {
  char buffer[4096];
  const ssize_t size = ::read(output_.Get(), buffer, sizeof buffer);
  if (size <= 0) return false;
  for (const char c : std::string_view(buffer, static_cast<std::size_t>(size))) {
    if (c != '\n') partialLine_ += c;
    if (c == '\n' || partialLine_.size() >= kMaxLine) TakeLine(std::exchange(partialLine_, ""));
  }
  return true;
}

void Supervisor::TakeLine(const std::string& line) {
  log_.Write(line);
  if (lastWords_.size() == kLastWords) lastWords_.pop_front();
  lastWords_.push_back(line);
  if (wasReady_ || !line.starts_with(kReadyLine)) return;
  wasReady_ = true;
  Report(kReadyReport);
}

// True when it was told to stop meanwhile.
bool Supervisor::PauseUnlessTold(std::chrono::seconds delay) {
  const auto until = Clock::now() + delay;
  while (!isStopping_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    if (left <= 0) return false;
    pollfd ready{signals_.Get(), POLLIN, 0};
    if (::poll(&ready, 1, static_cast<int>(left)) > 0) TakeSignals();
  }
  return true;
}

// Says it once, and lets go of the pipe to who started us.
void Supervisor::Report(const std::string& text) {
  if (::write(STDOUT_FILENO, text.data(), text.size()) < 0) log_.Write("supervisor: nobody waits for it");
  const Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere.Get(), stream);
}

void Supervisor::ReportFailedStart(const std::string& why) {
  std::string text = "The Data Server was not started: " + why + ".\n";
  for (const std::string& line : lastWords_) text += "  " + line + "\n";
  log_.Write("supervisor: " + why);
  Report(text);
}

}  // namespace

int Supervise(const Installation& installation) {
  Supervisor supervisor(installation);
  std::error_code error;
  const auto lock = SupervisorLock::Take(SupervisorLockFile(), error);
  if (error == std::errc::resource_unavailable_try_again) {
    supervisor.ReportFailedStart("another supervisor runs already");
    return 1;
  }
  return supervisor.Run();  // a file system without locks has its pid file still
}

}  // namespace pallomir::servicehost
