#include "servicehost/command_lock.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPauseMilliseconds = 50;

// The file that was locked may have been removed, with everything else, while we waited for it.
bool IsStillThere(const std::filesystem::path& file, const Descriptor& opened) {
  struct stat ours {
  }, there{};
  return ::fstat(opened.Get(), &ours) == 0 && ::stat(file.c_str(), &there) == 0 &&
         ours.st_ino == there.st_ino && ours.st_dev == there.st_dev;
}

}  // namespace

std::optional<CommandLock> CommandLock::Take(const std::filesystem::path& file,
                                             std::chrono::milliseconds patience, std::error_code& error) {
  const auto until = Clock::now() + patience;
  while (true) {
    std::filesystem::create_directories(file.parent_path(), error);
    if (error) return std::nullopt;  // waiting would not make it
    Descriptor opened(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
    if (!opened && errno != ENOENT) {
      error = {errno, std::generic_category()};
      return std::nullopt;
    }
    if (opened && ::flock(opened.Get(), LOCK_EX | LOCK_NB) == 0 && IsStillThere(file, opened)) {
      error.clear();
      return CommandLock(std::move(opened));
    }
    if (Clock::now() >= until) {
      error = std::make_error_code(std::errc::timed_out);
      return std::nullopt;
    }
    ::poll(nullptr, 0, kPauseMilliseconds);
  }
}

}  // namespace pallomir::servicehost
