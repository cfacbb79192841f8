#include "fakes/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace pallomir::fakes {
namespace {

using Clock = std::chrono::steady_clock;

int MillisecondsUntil(Clock::time_point until) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
  return static_cast<int>(std::max<long long>(0, left));
}

}  // namespace

Process::Process(const std::vector<std::string>& command,
                 const std::map<std::string, std::string>& environment) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that is killed takes it along
    ::dup2(ends[1], STDOUT_FILENO);
    ::dup2(ends[1], STDERR_FILENO);
    // The test's own sockets must not live on in the process.
    ::close_range(STDERR_FILENO + 1, ~0u, 0);
    for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
  ::close(ends[1]);
  pipe_ = ends[0];
}

Process::~Process() {
  if (!exitCode_) {
    Signal(SIGKILL);
    Wait();
  }
  // Helpers of the process go with it.
  if (pid_ > 0) ::kill(-pid_, SIGKILL);
  ::close(pipe_);
}

std::optional<std::string> Process::Await(const std::string& text, std::chrono::milliseconds patience) {
  const auto until = Clock::now() + patience;
  while (true) {
    for (std::size_t end; (end = output_.find('\n', searched_)) != std::string::npos;) {
      const std::string line = output_.substr(searched_, end - searched_);
      searched_ = end + 1;
      if (line.find(text) != std::string::npos) return line;
    }
    if (!ReadMore(until)) return std::nullopt;
  }
}

bool Process::ReadMore(Clock::time_point until) {
  pollfd ready{pipe_, POLLIN, 0};
  const int count = ::poll(&ready, 1, MillisecondsUntil(until));
  if (count < 0 && errno == EINTR) return true;
  if (count <= 0) return false;
  char buffer[65536];
  const ssize_t size = ::read(pipe_, buffer, sizeof buffer);
  if (size <= 0) return false;
  output_.append(buffer, static_cast<std::size_t>(size));
  return true;
}

void Process::Signal(int number) {
  if (pid_ > 0 && !exitCode_) ::kill(pid_, number);
}

int Process::Wait(std::chrono::milliseconds patience) {
  const auto until = Clock::now() + patience;
  while (!exitCode_) {
    int status = 0;
    const pid_t ended = ::waitpid(pid_, &status, WNOHANG);
    if (ended == pid_) {
      exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    } else if (Clock::now() >= until) {
      return -1000;
    } else if (!ReadMore(std::min(until, Clock::now() + std::chrono::milliseconds(50)))) {
      // The pipe is closed or quiet; the end itself has no event that can be polled together with it.
      ::poll(nullptr, 0, 5);
    }
  }
  return *exitCode_;
}

std::map<std::string, std::string> ClientEnvironment(const std::filesystem::path& folder,
                                                     const std::string& platform) {
  std::map<std::string, std::string> environment{
      {"QT_QPA_PLATFORM", platform},
      {"HOME", folder / "profile"},
      {"UserProfile", folder / "profile"},
      {"XDG_DATA_HOME", folder / "share"},
      {"XDG_CONFIG_HOME", folder / "config"},
      {"XDG_RUNTIME_DIR", folder / "runtime"},
      // Of the web engine itself: it keeps some memory to its end, and deletes under another size.
      {"ASAN_OPTIONS", "detect_leaks=0:new_delete_type_mismatch=0"},
  };
  if (::geteuid() == 0) environment.emplace("QTWEBENGINE_DISABLE_SANDBOX", "1");
  return environment;
}

}  // namespace pallomir::fakes
