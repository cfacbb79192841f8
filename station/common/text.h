#pragma once

#include <string>
#include <string_view>

namespace pallomir::station {

/// The text without the characters of `blanks` at either end.
inline std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The text as a string of JSON, with its quotes. Control characters other than line ends become blanks.
inline std::string QuotedForJson(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '\n')
      quoted += "\\n";
    else
      quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return quoted + '"';
}

}  // namespace pallomir::station
