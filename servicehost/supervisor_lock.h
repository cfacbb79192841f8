#pragma once

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "servicehost/descriptor.h"
#include "servicehost/process_handle.h"

namespace pallomir::servicehost {

/// Held by the supervisor for as long as it lives, so that it is found when its pid file is lost. The station
/// does not inherit it.
class SupervisorLock {
 public:
  /// Nothing, with `error` set, when another process holds it (resource_unavailable_try_again) or the file
  /// can't be opened.
  static std::optional<SupervisorLock> Take(const std::filesystem::path& file, std::error_code& error);

  /// Who holds it; nothing when nobody does, or the file is gone. Never to be asked by the holder itself:
  /// that would lose it.
  static std::optional<ProcessIdentity> Holder(const std::filesystem::path& file);

 private:
  explicit SupervisorLock(Descriptor file) : file_(std::move(file)) {}

  Descriptor file_;
};

}  // namespace pallomir::servicehost
