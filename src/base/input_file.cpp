#include "base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace pallomir {
namespace {

class SpecialFileCategory : public std::error_category {
 public:
  const char* name() const noexcept override { return "special file"; }
  std::string message(int) const override { return "It is a pipe, a socket or a device"; }
};

std::error_code LastError() { return {errno, std::generic_category()}; }

std::error_code KindError(const struct stat& status) {
  static const SpecialFileCategory special;
  if (S_ISREG(status.st_mode)) return {};
  if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  return {1, special};
}

}  // namespace

InputFile::InputFile(const std::filesystem::path& path) {
  // Looked at before it is opened, because opening alone makes some devices act; and opened without blocking,
  // because something else may be in its place by then.
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) error_ = LastError();
  if (!error_) error_ = KindError(status);
  if (error_) return;
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd_ < 0 || ::fstat(fd_, &status) != 0)
    error_ = LastError();
  else
    error_ = KindError(status);
  if (!error_) size_ = static_cast<std::size_t>(status.st_size);
}

InputFile::~InputFile() {
  if (fd_ >= 0) ::close(fd_);
}

std::size_t InputFile::Read(std::span<char> buffer) {
  std::size_t size = 0;
  while (!error_ && size < buffer.size()) {
    const ssize_t count = ::read(fd_, buffer.data() + size, buffer.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) error_ = LastError();
    if (count <= 0) break;
    size += static_cast<std::size_t>(count);
  }
  return size;
}

}  // namespace pallomir
