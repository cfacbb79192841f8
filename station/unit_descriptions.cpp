#include "station/unit_descriptions.h"

#include <sstream>

#include "base/whole_file.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

constexpr std::size_t kMaxDescriptionSize = 80;

// Descriptions of ten thousand units; anything longer is not this file.
constexpr std::size_t kMaxFileSize = 1 << 20;

std::filesystem::path DescriptionsFile(const std::filesystem::path& dataFolder) {
  return dataFolder / "descriptions.txt";
}

std::string DescriptionOf(const std::string& id, const UnitDescriptions& descriptions) {
  const auto found = descriptions.find(id);
  return found == descriptions.end() ? "" : found->second;
}

}  // namespace

std::string CleanDescription(std::string_view text) {
  std::string clean;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F && c != '~' && c != '"') clean += c;
  }
  clean.erase(0, clean.find_first_not_of(' '));
  if (clean.size() > kMaxDescriptionSize) {
    std::size_t end = kMaxDescriptionSize;
    while (end > 0 && (static_cast<unsigned char>(clean[end]) & 0xC0) == 0x80) --end;
    clean.resize(end);
  }
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

UnitDescriptions ReadDescriptions(const std::filesystem::path& dataFolder) {
  UnitDescriptions descriptions;
  std::error_code ignored;
  std::istringstream lines(ReadWholeFile(DescriptionsFile(dataFolder), kMaxFileSize, ignored).value_or(""));
  for (std::string line; std::getline(lines, line);) {
    const std::string id = line.substr(0, kUnitIdSize);
    if (IsUnitId(id) && line.size() > kUnitIdSize && line[kUnitIdSize] == ' ')
      descriptions[id] = CleanDescription(std::string_view(line).substr(kUnitIdSize));
  }
  return descriptions;
}

std::string WriteDescription(const std::filesystem::path& dataFolder, std::string_view unitId,
                             std::string_view description) {
  UnitDescriptions descriptions = ReadDescriptions(dataFolder);
  descriptions[std::string(unitId)] = description;
  std::string text;
  for (const auto& [id, known] : descriptions) text += id + " " + known + "\n";
  const auto error = ReplaceFile(DescriptionsFile(dataFolder), text);
  return error ? "can't write " + DescriptionsFile(dataFolder).string() + ": " + error.message() : "";
}

std::string UnitLines(const std::vector<std::string>& unitIds, const UnitDescriptions& descriptions) {
  std::string lines;
  for (const std::string& id : unitIds) lines += id + " " + DescriptionOf(id, descriptions) + "\n";
  return lines;
}

std::string ClientUnitList(const std::vector<std::string>& unitIds, const UnitDescriptions& descriptions) {
  std::string list;
  for (const std::string& id : unitIds) list += "X" + id + DescriptionOf(id, descriptions) + "~";
  return list;
}

}  // namespace pallomir::station
