#include "station/store/unit_descriptions.h"

#include <unistd.h>

#include <sstream>

#include "base/whole_file.h"
#include "station/store/unit_store.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// Descriptions of ten thousand units; anything longer is not this file.
constexpr std::size_t kMaxFileSize = 1 << 20;

// Ends, with the number of the process that writes it, the name of a file that is not finished yet.
const std::string kUnfinished = ".new-";

fs::path DescriptionsFile(const fs::path& dataFolder) { return dataFolder / "descriptions.txt"; }

// Empty if there is no file. One that can't be read is a problem, because it may hold anything.
std::string ReadText(const fs::path& file, std::string& problem) {
  std::error_code error;
  auto text = ReadWholeFile(file, kMaxFileSize, error);
  if (error && error != std::errc::no_such_file_or_directory)
    problem = file.string() + " can't be read: " + error.message();
  return std::move(text).value_or("");
}

// Empty if the line is not a description.
std::string UnitOf(const std::string& line) {
  std::string id = line.substr(0, kUnitIdSize);
  const bool isDescription = IsUnitId(id) && line.size() > kUnitIdSize && line[kUnitIdSize] == ' ';
  return isDescription ? id : "";
}

// All other lines stay as they are, in their order, whoever wrote them.
std::string WithDescription(const std::string& text, std::string_view unitId, std::string_view description) {
  std::string changed;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    if (UnitOf(line) != unitId) changed += line + "\n";
  return changed.append(unitId).append(" ").append(description).append("\n");
}

// Left by processes that died while they wrote. Under the lock nobody else is writing.
void RemoveUnfinished(const fs::path& file) {
  std::error_code error;
  const std::string start = file.filename().string() + kUnfinished;
  for (fs::directory_iterator entry(file.parent_path(), error), end; !error && entry != end;
       entry.increment(error))
    if (std::error_code ignored; entry->path().filename().string().starts_with(start))
      fs::remove(entry->path(), ignored);
}

}  // namespace

UnitDescriptions ReadDescriptions(const fs::path& dataFolder, std::string& problem) {
  UnitDescriptions descriptions;
  std::istringstream lines(ReadText(DescriptionsFile(dataFolder), problem));
  for (std::string line; std::getline(lines, line);)
    if (const std::string id = UnitOf(line); !id.empty())
      descriptions[id] = CleanDescription(std::string_view(line).substr(kUnitIdSize));
  return descriptions;
}

std::string WriteDescription(const ImportLock& lock, std::string_view unitId, std::string_view description) {
  const fs::path file = DescriptionsFile(lock.DataFolder());
  std::string problem;
  const std::string text = WithDescription(ReadText(file, problem), unitId, description);
  if (!problem.empty()) return problem;
  if (text.size() > kMaxFileSize) return file.string() + " has no room for another description";
  RemoveUnfinished(file);
  const auto error = ReplaceFile(file, text, kUnfinished + std::to_string(::getpid()));
  return error ? "can't write " + file.string() + ": " + error.message() : "";
}

}  // namespace pallomir::station
