#pragma once

#include <string_view>

namespace pallomir::station {

/// The text without the characters of `blanks` at either end.
inline std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace pallomir::station
