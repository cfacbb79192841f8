#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

#include "servicehost/descriptor.h"

namespace pallomir::servicehost {

/// Lets one command at a time at the service of a user. Gone with the process, however that ends.
class CommandLock {
 public:
  /// Waits for the other command; nothing, with `error` set, when it is not done within `patience` or the
  /// lock file (whose folder is made) can't be opened.
  static std::optional<CommandLock> Take(const std::filesystem::path& file,
                                         std::chrono::milliseconds patience, std::error_code& error);

 private:
  explicit CommandLock(Descriptor file) : file_(std::move(file)) {}

  Descriptor file_;
};

}  // namespace pallomir::servicehost
