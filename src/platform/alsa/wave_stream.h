#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "base/input_file.h"
#include "platform/wave_header.h"

namespace pallomir {

/// The samples of a wave file from front to back, in pieces; a file may be of any length.
class WaveStream {
 public:
  explicit WaveStream(const std::filesystem::path& file);

  /// Why there is nothing to play, or why reading broke off; empty where all is well.
  std::string Failure() const;
  const WaveHeader& Form() const { return header_; }

  /// Up to 64 kB of whole frames; empty at the end and after a failure. Valid until the next call.
  std::span<const char> Next();

 private:
  std::string path_;
  InputFile file_;
  std::string failure_;
  WaveHeader header_;
  std::vector<char> piece_;
  std::size_t kept_ = 0;  // bytes at the piece's front that are not given out yet
  std::size_t left_ = 0;  // bytes of sound that have not been read
};

}  // namespace pallomir
