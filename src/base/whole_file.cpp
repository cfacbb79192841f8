#include "base/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/input_file.h"

namespace pallomir {
namespace {

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Get() const { return fd_; }
  bool Close() {
    const bool closed = fd_ < 0 || ::close(fd_) == 0;
    fd_ = -1;
    return closed;
  }

 private:
  int fd_;
};

std::error_code LastError() { return {errno, std::generic_category()}; }

bool WriteAll(int fd, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(fd, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = EIO;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t limit,
                                         std::error_code& error) {
  InputFile file(path);
  error = file.Error();
  if (!error && file.Size() > limit) error = std::make_error_code(std::errc::file_too_large);
  if (error) return std::nullopt;
  std::string content(file.Size(), '\0');
  content.resize(file.Read(content));
  error = file.Error();
  return error ? std::nullopt : std::optional(std::move(content));
}

std::error_code WriteDurably(const std::filesystem::path& path, std::string_view content) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (file.Get() < 0) return LastError();
  if (WriteAll(file.Get(), content) && ::fsync(file.Get()) == 0 && file.Close()) return {};
  const std::error_code error = LastError();
  ::unlink(path.c_str());
  return error;
}

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& path) {
  if (::rename(from.c_str(), path.c_str()) != 0) {
    const std::error_code error = LastError();
    ::unlink(from.c_str());
    return error;
  }
  // The rename itself reaches the disk with the folder.
  Descriptor folder(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.Get() >= 0) ::fsync(folder.Get());
  return {};
}

std::error_code ReplaceFile(const std::filesystem::path& path, std::string_view content,
                            std::string_view suffix) {
  std::filesystem::path beside = path;
  beside += suffix;
  if (const std::error_code error = WriteDurably(beside, content)) return error;
  return MoveOver(beside, path);
}

}  // namespace pallomir
