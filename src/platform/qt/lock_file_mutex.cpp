#include "platform/qt/lock_file_mutex.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/qt/shared_file.h"

namespace pallomir {
namespace {

// The temporary folder is everybody's: another user's file or a link of that name is not ours to lock.
bool IsOwnPlainFile(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

int OpenLockFile(const std::filesystem::path& folder, const std::string& name) {
  const auto path = SharedFile(folder, name, ".lock");
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  if (file >= 0 && IsOwnPlainFile(file)) return file;
  if (file >= 0) ::close(file);
  return -1;
}

}  // namespace

LockFileMutex::~LockFileMutex() { Close(); }

bool LockFileMutex::IsOwnedElsewhere(const std::string& name) {
  if (owned_) return false;
  const int file = OpenLockFile(folder_, name);
  if (file < 0) return false;
  // A shared lock is refused only by an owner, not by another process that is asking the same.
  const bool refused = ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(file);
  return refused;
}

bool LockFileMutex::Create(const std::string& name) {
  // A process that is asking just now holds its shared lock for a moment.
  constexpr int kTries = 10;
  constexpr std::chrono::milliseconds kPause(5);

  Close();
  file_ = OpenLockFile(folder_, name);
  if (file_ < 0) return false;
  for (int i = 0; i < kTries && !owned_; ++i) {
    if (i > 0) std::this_thread::sleep_for(kPause);
    owned_ = ::flock(file_, LOCK_EX | LOCK_NB) == 0;
  }
  if (!owned_) Close();
  return owned_;
}

int LockFileMutex::Release() {
  if (!owned_) return EPERM;
  if (::flock(file_, LOCK_UN) != 0) return errno;
  owned_ = false;
  return 0;
}

void LockFileMutex::Close() {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
  owned_ = false;
}

}  // namespace pallomir
