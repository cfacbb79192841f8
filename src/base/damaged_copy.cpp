#include "base/damaged_copy.h"

#include <string>

#include "base/whole_file.h"

namespace pallomir {

std::error_code KeepDamagedCopy(const std::filesystem::path& file, std::string_view content) {
  constexpr int kMostCopies = 99;
  for (int number = 1; number <= kMostCopies; ++number) {
    std::filesystem::path aside = file;
    aside += ".damaged" + std::to_string(number);
    std::error_code error;
    const auto kept = ReadWholeFile(aside, content.size(), error);
    if (kept && *kept == content) return {};
    if (error == std::errc::no_such_file_or_directory) return ReplaceFile(aside, content);
  }
  return std::make_error_code(std::errc::file_exists);
}

}  // namespace pallomir
