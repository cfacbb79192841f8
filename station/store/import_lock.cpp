#include "station/store/import_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kBetweenTries{20};

std::string LastError() { return std::generic_category().message(errno); }

}  // namespace

std::string NoPlainFolder(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  switch (type) {
    case fs::file_type::directory:
    case fs::file_type::not_found:
      return "";
    case fs::file_type::none:
      return path.string() + " can't be looked at: " + error.message();
    case fs::file_type::symlink:
      return path.string() + " is a link, which an import leaves alone";
    default:
      return path.string() + " is no folder";
  }
}

ImportLock::ImportLock(fs::path dataFolder, std::chrono::milliseconds patience)
    : dataFolder_(std::move(dataFolder)), problem_(NoPlainFolder(Incoming())) {
  if (problem_.empty()) Take(patience);
}

ImportLock::~ImportLock() {
  if (fd_ >= 0) ::close(fd_);
}

void ImportLock::Take(std::chrono::milliseconds patience) {
  std::error_code error;
  fs::create_directories(Incoming(), error);
  if (error) {
    problem_ = "can't create " + Incoming().string() + ": " + error.message();
    return;
  }
  const fs::path file = Incoming() / "lock";
  fd_ = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0644);
  if (fd_ < 0) {
    problem_ = "can't open " + file.string() + ": " + LastError();
    return;
  }
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (::flock(fd_, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) {
      problem_ = "can't lock " + file.string() + ": " + LastError();
      return;
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      problem_ = "another import into " + dataFolder_.string() + " is at work";
      return;
    }
    std::this_thread::sleep_for(kBetweenTries);
  }
}

}  // namespace pallomir::station
