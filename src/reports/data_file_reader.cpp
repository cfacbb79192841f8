#include "reports/data_file_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace pallomir {

DataFileReader::Outcome DataFileReader::Read(int folder, const char* name) {
  fileSize_ = bytesRead_ = 0;
  errorNumber_ = 0;
  // Without waiting: since the folder was listed, a pipe may have taken the place.
  const int fd = ::openat(folder, name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) {
    errorNumber_ = errno;
    if (errorNumber_ == ENXIO) return Outcome::kNoFile;  // a socket, or a device without its driver
    return errorNumber_ == ENOENT ? Outcome::kGone : Outcome::kNotOpened;
  }
  const Outcome outcome = ReadOpened(fd);
  ::close(fd);
  return outcome;
}

DataFileReader::Outcome DataFileReader::ReadOpened(int fd) {
  struct stat status {};
  if (::fstat(fd, &status) != 0) {
    errorNumber_ = errno;
    return Outcome::kNotOpened;
  }
  if (!S_ISREG(status.st_mode)) return Outcome::kNoFile;
  fileSize_ = static_cast<std::size_t>(status.st_size);
  if (!IsDataFileSize(fileSize_)) return Outcome::kCorrupted;
  // As a rule one call brings all: it asks for a byte more than there is, so that less means the end.
  for (ssize_t count = 1; count > 0 && bytesRead_ < buffer_.size();) {
    count = ::read(fd, buffer_.data() + bytesRead_, buffer_.size() - bytesRead_);
    if (count < 0 && errno == EINTR) {
      count = 1;
    } else if (count < 0) {
      errorNumber_ = errno;
      return Outcome::kNotRead;
    } else {
      bytesRead_ += static_cast<std::size_t>(count);
      if (bytesRead_ == fileSize_) break;
    }
  }
  return bytesRead_ == fileSize_ ? Outcome::kRead : Outcome::kSizeChanged;
}

}  // namespace pallomir
