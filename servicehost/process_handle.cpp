#include "servicehost/process_handle.h"

#include <poll.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <sstream>

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

// What KILL needs at most, unless the process is stuck in the kernel.
constexpr std::chrono::seconds kKillPatience{5};

std::string FirstLine(const std::string& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  return line;
}

}  // namespace

std::optional<ProcessIdentity> IdentityOf(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  const std::string stat(std::istreambuf_iterator<char>(file), {});
  // The name before the last bracket may hold anything.
  const auto bracket = stat.rfind(')');
  if (bracket == stat.npos) return std::nullopt;
  std::istringstream fields(stat.substr(bracket + 1));
  std::string state, skipped;
  fields >> state;
  for (int i = 0; i < 18; ++i) fields >> skipped;
  ProcessIdentity identity{pid, 0, FirstLine("/proc/sys/kernel/random/boot_id")};
  if (!(fields >> identity.startTicks) || state == "Z" || state == "X") return std::nullopt;
  return identity;
}

std::string ToText(const ProcessIdentity& identity) {
  return std::to_string(identity.pid) + " " + std::to_string(identity.startTicks) + " " + identity.boot;
}

std::optional<ProcessIdentity> ParseIdentity(std::string_view text) {
  std::istringstream fields{std::string(text)};
  ProcessIdentity identity;
  if (!(fields >> identity.pid >> identity.startTicks >> identity.boot)) return std::nullopt;
  // 1 and what is below mean the system or whole groups.
  if (identity.pid <= 1 || !(fields >> std::ws).eof()) return std::nullopt;
  return identity;
}

Descriptor OpenProcess(pid_t pid) { return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0))); }

std::optional<ProcessHandle> ProcessHandle::Open(const ProcessIdentity& identity) {
  Descriptor process = OpenProcess(identity.pid);
  // Asked after opening: the handle belongs to the process that is identified here.
  if (!process || IdentityOf(identity.pid) != identity) return std::nullopt;
  return ProcessHandle(std::move(process));
}

bool ProcessHandle::Signal(int number) const {
  return ::syscall(SYS_pidfd_send_signal, process_.Get(), number, nullptr, 0) == 0;
}

bool ProcessHandle::AwaitEnd(std::chrono::milliseconds limit) const {
  const auto until = Clock::now() + limit;
  pollfd ended{process_.Get(), POLLIN, 0};
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    const int count = ::poll(&ended, 1, static_cast<int>(std::max<long long>(0, left)));
    if (count > 0) return true;
    if (count == 0 || errno != EINTR) return false;
  }
}

bool ProcessHandle::End(std::chrono::milliseconds patience) const {
  Signal(SIGTERM);
  if (AwaitEnd(patience)) return true;
  Signal(SIGKILL);
  return AwaitEnd(kKillPatience);
}

}  // namespace pallomir::servicehost
