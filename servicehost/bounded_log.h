#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "servicehost/descriptor.h"

namespace pallomir::servicehost {

/// Appends lines with the local time to a file. A file that has reached `limit` bytes is kept once, as
/// FILE.1, so that the two never hold more than twice the limit (and a line). What can't be written is lost.
class BoundedLog {
 public:
  BoundedLog(std::filesystem::path file, std::size_t limit);

  void Write(std::string_view line);

 private:
  void Open();

  std::filesystem::path file_;
  std::size_t limit_;
  std::size_t size_ = 0;
  Descriptor stream_;
};

/// "2026-11-22 12:00:00", local.
std::string LocalTimeText();

}  // namespace pallomir::servicehost
