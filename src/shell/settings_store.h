#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/settings.h"

namespace pallomir {

/// Every setting belongs to this application and section.
inline constexpr std::string_view kSettingsApplication = "pallomir browser";
inline constexpr std::string_view kSettingsSection = "Startup";

/// Keys and values in the order in which they were first seen.
class SettingsTable {
 public:
  const std::string* Find(std::string_view key) const;
  void Set(std::string_view key, std::string_view value);

  struct Entry {
    std::string key;
    std::string value;
  };
  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
  std::map<std::string, std::size_t, std::less<>> places_;
};

/// One line of the settings file without its end: key and value in double quotes, separated by a comma. A
/// quote inside is doubled. A text with line breaks begins with a mark and has them escaped, so that what is
/// read back is what was saved.
std::string SettingsLine(std::string_view key, std::string_view value);

/// The table that a file's text holds. Lines that are none are counted and left out.
struct ParsedSettings {
  SettingsTable table;
  std::size_t damagedLines = 0;
};
ParsedSettings ParseSettings(std::string_view text);

/// The settings file "Registry.txt", read on first use and rewritten whole by every save. A file with damage
/// is copied aside before anything replaces it.
class SettingsStore : public Settings {
 public:
  /// `report` gets a line for the trace about damage and failed writes.
  SettingsStore(std::filesystem::path commonDataFolder, std::function<void(const std::string&)> report);

  std::string Get(std::string_view key, std::string_view defaultValue) override;
  std::string Save(std::string_view key, std::string_view value) override;

  const std::filesystem::path& File() const { return file_; }

 private:
  void LoadOnce();
  void KeepAside(const std::function<std::error_code(const std::filesystem::path&)>& keep,
                 std::string_view content = {});

  std::filesystem::path file_;
  std::function<void(const std::string&)> report_;
  SettingsTable table_;
  bool loaded_ = false;
  bool writable_ = true;
};

}  // namespace pallomir
