#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/settings_text.h"

namespace pallomir {

/// The folder below the common application data that holds the settings file.
std::filesystem::path SettingsFolder(const std::filesystem::path& commonDataFolder);

/// The settings file "Registry.txt". What it holds is never lost to a start that can't use it: damaged
/// content is kept aside before anything replaces it; a file that can't be read or kept is not written.
class SettingsFile {
 public:
  /// `report` gets a line for the trace about damage.
  SettingsFile(const std::filesystem::path& commonDataFolder, std::function<void(const std::string&)> report);

  struct Loaded {
    SettingsTable table;
    /// What the user has to know: nothing is stored in this run, and why. Empty when all is well.
    std::string trouble;
  };
  Loaded Load();

  /// Replaces the file whole, unless it holds all this already. The error, or none; none too where the file
  /// is not to be written.
  std::error_code Write(const SettingsTable& table);

  const std::filesystem::path& Path() const { return path_; }

 private:
  bool KeepAside(const std::function<std::error_code(const std::filesystem::path&)>& keep,
                 std::string_view content = {});

  std::filesystem::path path_;
  std::function<void(const std::string&)> report_;
  bool writable_ = true;
  std::string content_;  // of the file, as far as it is known
};

}  // namespace pallomir
