#include "servicehost/record_file.h"

#include <sstream>

#include "base/whole_file.h"

namespace pallomir::servicehost {
namespace {

constexpr std::size_t kMaxSize = 64 * 1024;

}  // namespace

Record ParseRecord(const std::string& text) {
  std::istringstream lines(text);
  Record record;
  for (std::string line; std::getline(lines, line);) {
    const auto equals = line.find('=');
    if (equals != line.npos) record[line.substr(0, equals)] = line.substr(equals + 1);
  }
  return record;
}

Record ReadRecord(const std::filesystem::path& file) {
  std::error_code error;
  return ParseRecord(ReadWholeFile(file, kMaxSize, error).value_or(""));
}

std::error_code WriteRecord(const std::filesystem::path& file, const Record& record) {
  std::string text;
  for (const auto& [key, value] : record) text += key + "=" + value + "\n";
  return ReplaceFile(file, text);
}

}  // namespace pallomir::servicehost
