#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

// The house is laid out as docs/architecture.md says: includes go downwards only, no file stands in a circle,
// Qt stays in the skin, and no file outgrows its subject.

namespace pallomir {
namespace {

namespace fs = std::filesystem;

const fs::path kTop = HOUSE_FOLDER;

/// Rooms of one floor do not include each other; each may include all floors above it in this list.
const std::vector<std::vector<std::string>> kFloors{
    {"src/base"},
    {"src/platform"},
    {"src/ui", "src/settings", "src/platform/qt", "src/platform/alsa"},
    {"src/map"},
    {"src/tracking"},
    {"src/timeline", "src/zones", "src/hotspots", "src/dataserver"},
    {"src/alerts", "src/reports", "src/journal", "src/live"},
    {"src/commands"},
    {"src/window"},
    {"src/shell"},
    {"src"},
    {"station/common"},
    {"station/store"},
    {"station/wire", "station/import", "station/demo", "station/web"},
    {"station"},
    {"servicehost"},
};

struct SourceFile {
  std::string path;  // from the top, "src/map/tile_name.h"
  std::string room;  // its folder
  std::size_t lines = 0;
  std::size_t codeLines = 0;          // neither blank nor a comment
  std::vector<std::string> includes;  // with quotes, resolved to paths from the top
  bool includesQt = false;
};

std::string RoomOf(const std::string& path) { return fs::path(path).parent_path().generic_string(); }

std::string Resolved(const std::string& from, const std::string& include) {
  for (const fs::path& base : {kTop / "src", kTop, kTop / RoomOf(from)}) {
    if (fs::exists(base / include)) return fs::relative(base / include, kTop).generic_string();
  }
  ADD_FAILURE() << from << " includes " << include << ", which is nowhere";
  return include;
}

SourceFile Read(const fs::path& file) {
  static const std::regex kOurs("^#include \"([^\"]+)\".*");
  static const std::regex kNoCode("^ *(//.*)?$");
  SourceFile read;
  read.path = fs::relative(file, kTop).generic_string();
  read.room = RoomOf(read.path);
  std::ifstream in(file);
  std::smatch match;
  for (std::string line; std::getline(in, line); ++read.lines) {
    if (!std::regex_match(line, kNoCode)) ++read.codeLines;
    if (std::regex_match(line, match, kOurs)) read.includes.push_back(Resolved(read.path, match[1]));
    if (line.starts_with("#include <Q")) read.includesQt = true;
  }
  return read;
}

const std::vector<SourceFile>& Files() {
  static const std::vector<SourceFile> files = [] {
    std::vector<SourceFile> found;
    for (const char* folder : {"src", "station", "servicehost"}) {
      for (const auto& entry : fs::recursive_directory_iterator(kTop / folder)) {
        const auto extension = entry.path().extension();
        if (extension == ".h" || extension == ".cpp") found.push_back(Read(entry.path()));
      }
    }
    std::ranges::sort(found, {}, &SourceFile::path);
    return found;
  }();
  return files;
}

std::optional<std::size_t> FloorOf(const std::string& room) {
  for (std::size_t floor = 0; floor < kFloors.size(); ++floor) {
    if (std::ranges::find(kFloors[floor], room) != kFloors[floor].end()) return floor;
  }
  return std::nullopt;
}

TEST(House, IncludesGoDownwards) {
  for (const SourceFile& file : Files()) {
    const auto floor = FloorOf(file.room);
    ASSERT_TRUE(floor) << file.room << " is no room of the list";
    for (const std::string& include : file.includes) {
      const std::string room = RoomOf(include);
      if (room == file.room) continue;
      EXPECT_LT(FloorOf(room).value_or(kFloors.size()), *floor) << file.path << " includes " << include;
    }
  }
}

// A header and the source of its name count as one.
std::string Subject(const std::string& path) { return fs::path(path).replace_extension().generic_string(); }

using Graph = std::map<std::string, std::set<std::string>>;

// The circle that `subject` closes with those on the way to it, or nothing.
std::string CircleFrom(const std::string& subject, const Graph& graph, std::vector<std::string>& way,
                       std::set<std::string>& done) {
  const auto before = std::ranges::find(way, subject);
  if (before != way.end()) {
    std::string circle;
    for (auto at = before; at != way.end(); ++at) circle += *at + " -> ";
    return circle + subject;
  }
  if (!done.insert(subject).second) return {};
  way.push_back(subject);
  for (const std::string& next : graph.at(subject)) {
    if (std::string circle = CircleFrom(next, graph, way, done); !circle.empty()) return circle;
  }
  way.pop_back();
  return {};
}

TEST(House, NoFilesIncludeEachOtherInACircle) {
  Graph graph;
  for (const SourceFile& file : Files()) {
    auto& includes = graph[Subject(file.path)];
    for (const std::string& include : file.includes) {
      if (Subject(include) != Subject(file.path)) includes.insert(Subject(include));
    }
  }
  for (const SourceFile& file : Files())
    for (const std::string& include : file.includes) graph.try_emplace(Subject(include));
  std::set<std::string> done;
  for (const auto& [subject, includes] : graph) {
    std::vector<std::string> way;
    EXPECT_EQ(CircleFrom(subject, graph, way, done), "");
  }
}

// The skin: the ports on Qt, windows, widgets, and the program that joins them.
bool IsSkin(const SourceFile& file) {
  static const std::regex kSkin(R"(.*/([fF]orm[A-Z]\w*|\w+_widget|program|main)\.(h|cpp))");
  return file.room == "src/platform/qt" || std::regex_match(file.path, kSkin);
}

TEST(House, QtStaysInTheSkin) {
  for (const SourceFile& file : Files()) {
    EXPECT_TRUE(!file.includesQt || IsSkin(file)) << file.path;
  }
}

// A new capability is joined in a file of its own: the conductor gets a member and a place in its list.
TEST(House, TheConductorStaysSmall) {
  std::size_t code = 0;
  for (const SourceFile& file : Files()) {
    if (file.path.starts_with("src/shell/client")) code += file.codeLines;
    if (file.path == "src/shell/client.h") {
      EXPECT_LE(file.lines, 150u);
    }
  }
  EXPECT_GT(code, 0u);
  EXPECT_LE(code, 500u);
}

TEST(House, NoFileOutgrowsItsSubject) {
  constexpr std::size_t kMostLines = 500;
  for (const SourceFile& file : Files()) EXPECT_LE(file.lines, kMostLines) << file.path;
}

}  // namespace
}  // namespace pallomir
