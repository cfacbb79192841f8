#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>

namespace pallomir {

/// A plain file, read from front to back. What is no plain file is an error, which says so: a pipe or a
/// device may wait for ever or never end.
class InputFile {
 public:
  explicit InputFile(const std::filesystem::path& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// The latest failure, of opening or of reading.
  std::error_code Error() const { return error_; }

  /// In bytes, when it was opened.
  std::size_t Size() const { return size_; }

  /// Fills `buffer` as far as there is something. How many bytes; fewer at the end and after a failure.
  std::size_t Read(std::span<char> buffer);

 private:
  int fd_ = -1;
  std::size_t size_ = 0;
  std::error_code error_;
};

}  // namespace pallomir
