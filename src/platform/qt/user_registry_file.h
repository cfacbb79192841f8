#pragma once

#include <filesystem>

#include "platform/user_registry.h"

namespace pallomir {

/// The user's registry as one small file of "key=value" lines under the user's configuration folder.
class UserRegistryFile : public UserRegistry {
 public:
  /// `$XDG_CONFIG_HOME`, else `~/.config`, then "pallomir browser/Startup.ini".
  UserRegistryFile();
  explicit UserRegistryFile(std::filesystem::path file);

  std::string Get(std::string_view key, std::string_view defaultValue) const override;
  /// On disk when it returns. A failure costs the value only.
  void Save(std::string_view key, std::string_view value) override;

 private:
  std::filesystem::path file_;
};

}  // namespace pallomir
