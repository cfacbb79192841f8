#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

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

}  // namespace pallomir
