#include "servicehost/supervisor_lock.h"

#include <fcntl.h>

#include <cerrno>

namespace pallomir::servicehost {
namespace {

// A lock of the process, not of the open file: only such a one tells who holds it.
struct flock WholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

}  // namespace

std::optional<SupervisorLock> SupervisorLock::Take(const std::filesystem::path& file,
                                                   std::error_code& error) {
  Descriptor opened(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
  struct flock lock = WholeFile();
  if (!opened || ::fcntl(opened.Get(), F_SETLK, &lock) != 0) {
    error = {errno == EACCES && opened ? EAGAIN : errno, std::generic_category()};
    return std::nullopt;
  }
  error.clear();
  return SupervisorLock(std::move(opened));
}

std::optional<ProcessIdentity> SupervisorLock::Holder(const std::filesystem::path& file) {
  const Descriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct flock lock = WholeFile();
  if (!opened || ::fcntl(opened.Get(), F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return std::nullopt;
  return IdentityOf(lock.l_pid);
}

}  // namespace pallomir::servicehost
