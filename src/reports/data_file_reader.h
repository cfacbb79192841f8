#pragma once

#include <array>

#include "reports/data_file.h"

namespace pallomir {

/// Reads one data file after the other into the same memory.
class DataFileReader {
 public:
  enum class Outcome {
    kRead,
    kNoFile,       ///< something else, a folder or a pipe, stands there by now
    kGone,         ///< nothing does
    kNotOpened,    ///< ErrorNumber says why
    kNotRead,      ///< ErrorNumber says why
    kCorrupted,    ///< no data file has this size
    kSizeChanged,  ///< it became longer or shorter while it was read
  };

  /// Reads the file `name` of the folder with the descriptor `folder`.
  Outcome Read(int folder, const char* name);

  /// What was read by the latest Read, if that was kRead: whole records, or nothing. Until the next one.
  ByteView Content() const { return {buffer_.data(), bytesRead_}; }

  int ErrorNumber() const { return errorNumber_; }
  std::size_t FileSize() const { return fileSize_; }
  std::size_t BytesRead() const { return bytesRead_; }

 private:
  Outcome ReadOpened(int fd);

  std::array<std::uint8_t, kMaxDataFileSize + 1> buffer_;  // one more, to see that a file has grown
  std::size_t fileSize_ = 0;
  std::size_t bytesRead_ = 0;
  int errorNumber_ = 0;
};

}  // namespace pallomir
