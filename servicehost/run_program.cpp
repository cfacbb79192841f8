#include "servicehost/run_program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "servicehost/descriptor.h"
#include "servicehost/process_handle.h"
#include "servicehost/spawn.h"

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMaxOutput = 16 * 1024;

int MillisecondsUntil(Clock::time_point until) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
  return static_cast<int>(std::max<long long>(0, left));
}

// False at the end of the stream. What is over the limit is read and dropped, so that the writer goes on.
bool TakeOutput(int stream, std::string& output) {
  char buffer[4096];
  const ssize_t size = ::read(stream, buffer, sizeof buffer);
  if (size < 0) return errno == EINTR || errno == EAGAIN;
  output.append(buffer, std::min(static_cast<std::size_t>(size), kMaxOutput - output.size()));
  return size > 0;
}

// Gathers output until the process has ended; false when the time is over before.
bool Follow(int stream, int process, Clock::time_point until, std::string& output) {
  pollfd ready[] = {{process, POLLIN, 0}, {stream, POLLIN, 0}};
  while (true) {
    const int count = ::poll(ready, 2, MillisecondsUntil(until));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    if (ready[1].revents != 0 && !TakeOutput(stream, output)) ready[1].fd = -1;
    // What it has written before its end is still in the pipe, and more than the limit is of no use.
    if (ready[0].revents != 0 && (ready[1].revents == 0 || output.size() == kMaxOutput)) return true;
  }
}

}  // namespace

std::string RunOutcome::Reason() const {
  if (!problem.empty()) return problem;
  const auto last = output.find_last_not_of(" \t\r\n");
  if (last == output.npos) return "exit code " + std::to_string(exitCode);
  const auto before = output.find_last_of('\n', last);
  const std::size_t begin = before == output.npos ? 0 : before + 1;
  return output.substr(begin, last + 1 - begin);
}

RunOutcome RunProgram(const std::vector<std::string>& command, std::chrono::milliseconds limit) {
  RunOutcome outcome;
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    outcome.problem = std::strerror(errno);
    return outcome;
  }
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const pid_t process = Spawn(command, writing.Get(), ProcessGroup::kOwn);
  writing.Close();
  if (process < 0) {
    outcome.problem = command[0] + ": " + std::strerror(-process);
    return outcome;
  }
  const Descriptor handle = OpenProcess(process);
  const bool ended = Follow(reading.Get(), handle.Get(), Clock::now() + limit, outcome.output);
  if (!ended) ::kill(-process, SIGKILL);
  int status = 0;
  while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (!ended)
    outcome.problem = command[0] + " did not finish within " + std::to_string(limit.count() / 1000) + " s";
  else if (WIFSIGNALED(status))
    outcome.problem = command[0] + " was ended by signal " + std::to_string(WTERMSIG(status));
  else
    outcome.exitCode = WEXITSTATUS(status);
  return outcome;
}

}  // namespace pallomir::servicehost
