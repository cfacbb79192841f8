#include "reports/visit_search.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "base/number_format.h"
#include "oracles/literal_visits.h"
#include "reports_testing.h"

namespace pallomir {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "00000000000A", kOther = "00000000000B";

// One degree around no-place; the records of the tests are either there or at 2 degrees.
const SearchArea kHere = SearchArea::Rectangle(-1, 1, -1, 1);
constexpr std::int32_t kAway = 2 * 600000;

VisitQuery QueryOf(std::vector<std::string> units) { return {std::move(units), kHere, {}, kMostVisits}; }

void Finish(VisitSearch& search) {
  while (search.Step()) {
  }
}

std::string Text(const std::vector<Visit>& visits) {
  std::string text;
  for (const Visit& visit : visits)
    text += std::to_string(visit.unit) + " " + HexDigits(visit.entry, 8) + " " + HexDigits(visit.exit, 8) +
            " " + std::to_string(visit.records) + "\n";
  return text;
}

// Records a second apart, "x" inside and "." outside, from the oldest on.
std::vector<WireRecord> Pattern(const std::string& pattern, std::int64_t second = 0) {
  std::vector<WireRecord> records;
  for (const char c : pattern) records.push_back(RecordAt(second++, c == 'x' ? 0 : kAway));
  return records;
}

TEST(VisitSearch, FindsRunsAcrossFiles) {
  const struct {
    const char* name;
    std::vector<std::string> files;
    std::vector<Visit> visits;
  } cases[] = {
      {"none", {"..."}, {}},
      {"open at both ends", {"xxx"}, {{0, Second(0), Second(2), 3}}},
      {"one record", {"..x."}, {{0, Second(2), Second(2), 1}}},
      {"two", {"xx.x."}, {{0, Second(3), Second(3), 1}, {0, Second(0), Second(1), 2}}},
      {"over a border", {"..xx", "x.."}, {{0, Second(2), Second(4), 3}}},
      {"over an empty file", {".x", "", "x"}, {{0, Second(1), Second(2), 2}}},
      {"over a whole file", {".x", "xx", "x"}, {{0, Second(1), Second(4), 4}}},
      {"ends at a border", {"x", "..", "x"}, {{0, Second(3), Second(3), 1}, {0, Second(0), Second(0), 1}}},
  };
  for (const auto& c : cases) {
    const DataFolder folder;
    std::int64_t second = 0;
    for (std::size_t i = 0; i < c.files.size(); second += static_cast<std::int64_t>(c.files[i++].size()))
      folder.Write(kUnit, std::to_string(i), FileOf(Pattern(c.files[i], second)));
    VisitSearch search(folder.Path(), QueryOf({kUnit}));
    Finish(search);
    EXPECT_EQ(Text(search.Visits()), Text(c.visits)) << c.name;
    EXPECT_EQ(search.Problem(), "") << c.name;
    EXPECT_EQ(search.State().percent, 100) << c.name;
  }
}

// Of the unit's three files the oldest holds no records: reading it would be told.
TEST(VisitSearch, ReadsAUnitAsFarAsItMustAndNoFurther) {
  const struct {
    const char* name;
    std::string older, other;
    std::size_t limit;
    TimeSpan span;
    Visit visit;
  } cases[] = {
      {"both ends of the time count", "xxxx", "", 500, {Second(2), Second(5)}, {1, Second(2), Second(5), 4}},
      {"away before the time", "....", "", 500, {Second(2), Second(5)}, {1, Second(4), Second(5), 2}},
      {"open, others are newer", "xxxx", "x", 1, {Second(2), Second(7)}, {1, Second(2), Second(7), 6}},
  };
  for (const auto& c : cases) {
    const DataFolder folder;
    folder.Write(kOther, "1", FileOf(Pattern(c.other, 5)));
    folder.Write(kUnit, "0", "no record");
    folder.Write(kUnit, "1", FileOf(Pattern(c.older)));
    folder.Write(kUnit, "2", FileOf(Pattern("xxxx", 4)));
    VisitSearch search(folder.Path(), {{kOther, kUnit}, kHere, c.span, c.limit});
    Finish(search);
    EXPECT_EQ(Text(search.Visits()), Text({c.visit})) << c.name;
    EXPECT_EQ(search.Problem(), "") << c.name;
  }
}

TEST(VisitSearch, SaysWhatEndedItAndKeepsWhatItFound) {
  const std::string good = FileOf(Pattern("..x.", 100));
  const auto message = [&](const std::string& older, std::vector<std::string> units = {kUnit, kOther}) {
    const DataFolder folder;
    folder.Write(kUnit, "b", good);
    folder.Write(kUnit, "a", older);
    folder.Write(kOther, "", "");
    VisitSearch search(folder.Path(), QueryOf(std::move(units)));
    Finish(search);
    EXPECT_EQ(Text(search.Visits()), Text({{0, Second(102), Second(102), 1}}));
    EXPECT_FALSE(search.Step());
    StoreSummaries(folder.Path(), kUnit);
    VisitSearch again(folder.Path(), search.Query());
    Finish(again);
    EXPECT_EQ(again.Problem(), search.Problem()) << "with summaries";
    return search.Problem();
  };
  EXPECT_EQ(message(""), "");
  EXPECT_EQ(message(FileOf(Pattern(".", 100))), "") << "equal times pass";
  EXPECT_EQ(message(std::string(15, 'x')), "Error 65387: Corrupted file -- a");
  EXPECT_EQ(message(FileOf(Pattern("..", 100))),
            "Error 776143: DP_Count = 5\nprevious time (6AECC068) less than current time (6AECC069)\n"
            "J = 1, KO = 1, DataFileName = a, Ix(J) = 2\nFile Size = 28,       difference = 1");
  const DataFolder folder;
  VisitSearch nowhere(folder.Path() / "none", QueryOf({kUnit}));
  EXPECT_FALSE(nowhere.Step());
  EXPECT_NE(nowhere.Problem().find("/none"), std::string::npos);
  fakes::WriteFile(folder.Path() / kUnit, "");
  VisitSearch noFolder(folder.Path(), QueryOf({kUnit}));
  Finish(noFolder);
  EXPECT_EQ(noFolder.Problem(), "Error 853451: CreateFile failed\nNumber 20\nFileCount_In(J) = 0");
}

TEST(VisitSearch, SearchesAUnitAnewOnceWhenItsFolderIsExchanged) {
  const DataFolder folder;
  const auto write = [&folder](const std::string& unit, const std::string& mark) {
    for (int i = 0; i < 100; ++i)
      folder.Write(unit, std::to_string(1000 + i) + mark,
                   FileOf(Pattern(i % 50 == 0 ? "..x." : "....", i * 10)));
  };
  const auto exchange = [&folder, &write](const std::string& mark) {
    fs::remove_all(folder.Path() / "next");
    write("next", mark);
    fs::remove_all(folder.Path() / kUnit);
    fs::rename(folder.Path() / "next", folder.Path() / kUnit);
  };
  for (const int exchanges : {1, 2}) {
    exchange("first");
    VisitSearch search(folder.Path(), QueryOf({kOther, kUnit}));
    for (int i = 0; i < 3; ++i) search.Step();  // both are listed, then 63 files
    EXPECT_EQ(search.Visits().size(), 1u);
    for (int i = 0; i < exchanges; ++i) {
      exchange(std::to_string(i));
      search.Step();
    }
    Finish(search);
    EXPECT_EQ(search.Visits().size(), exchanges == 1 ? 2u : 1u);
    EXPECT_EQ(search.Problem(),
              exchanges == 1 ? "" : "Error 853451: CreateFile failed\nNumber 2\nFileCount_In(J) = 100");
  }
}

TEST(VisitSearch, ListsTheNewestOverAllUnits) {
  const DataFolder folder;
  std::vector<std::string> units;
  for (int unit = 0; unit < 3; ++unit) {
    units.push_back("00000000000" + std::to_string(unit));
    for (int file = 0; file < 20; ++file) {
      std::string pattern;
      for (int i = 0; i < 10; ++i) pattern += std::string(static_cast<std::size_t>(unit), '.') + "x...";
      folder.Write(units.back(), std::to_string(100 + file), FileOf(Pattern(pattern, file * 100)));
    }
  }
  VisitQuery query = QueryOf(units);
  for (const std::size_t limit : {1u, 7u, 500u, 600u, 1000u}) {
    query.limit = limit;
    VisitSearch search(folder.Path(), query);
    while (search.Step()) {
      const auto soFar = search.Visits();
      EXPECT_LE(soFar.size(), limit);
      EXPECT_TRUE(std::ranges::is_sorted(soFar, std::ranges::greater{}, &Visit::exit));
    }
    EXPECT_EQ(search.Visits().size(), std::min<std::size_t>(limit, 600));
    EXPECT_EQ(search.State().records < 200, limit < 10) << "older ones that could not be listed are not read";
  }
}

TEST(VisitSearch, WorksInBlocks) {
  const DataFolder folder;
  for (int file = 0; file < 60; ++file)
    folder.Write(kUnit, std::to_string(100 + file), FileOf(Pattern(std::string(720, '.'), file * 1000)));
  VisitSearch search(folder.Path(), QueryOf({kUnit}));
  std::uint64_t before = 0;
  int percent = 0;
  for (; search.Step(); before = search.State().records) {
    EXPECT_LE(search.State().records - before, VisitSearch::kRecordsPerBlock + 720);
    EXPECT_GE(search.State().percent, percent);
    percent = search.State().percent;
  }
  EXPECT_EQ(search.State().records, 60u * 720);
  EXPECT_EQ(search.State().files, 60u);
  EXPECT_EQ(search.State().fileCount, 60u);
  EXPECT_LT(percent, 100);
  EXPECT_GT(percent, 60);
}

TEST(VisitSearch, TrustsASummaryAsLongAsItFitsItsFile) {
  const DataFolder folder;
  const fs::path file = folder.Write(kUnit, "1", FileOf(Pattern(std::string(70, '.'))));
  folder.Write(kUnit, "2", FileOf(Pattern("..x", 70)));
  const auto visits = [&folder] {
    VisitSearch search(folder.Path(), QueryOf({kUnit}));
    Finish(search);
    EXPECT_EQ(search.State().records, 73u);
    return search.Visits().size();
  };
  StoreSummaries(folder.Path(), kUnit);
  EXPECT_EQ(visits(), 1u);
  const auto time = fs::last_write_time(file);
  folder.Write(kUnit, "1", FileOf(Pattern("x" + std::string(69, '.'))));
  fs::last_write_time(file, time);
  EXPECT_EQ(visits(), 1u) << "it is not read";
  fs::last_write_time(file, time + std::chrono::nanoseconds(1));
  EXPECT_EQ(visits(), 2u) << "its time is another one";
  fs::last_write_time(file, time);
  fs::rename(file, folder.Path() / "aside");
  fs::copy(folder.Path() / "aside", file);
  fs::last_write_time(file, time);
  EXPECT_EQ(visits(), 2u) << "it is another file";
  StoreSummaries(folder.Path(), kUnit);
  EXPECT_EQ(visits(), 2u);
}

// Folders that nobody would make: few and many files of all sizes, odd names, flagged and equal times, times
// that run back, sizes that are wrong, positions near the edges on both sides of the equator and of
// Greenwich.
class RandomFolder {
 public:
  explicit RandomFolder(std::mt19937& random) : random_(random) {
    for (const std::string& unit : {kUnit, kOther, std::string("00000000000C")}) {
      std::int64_t second = Number(50);
      for (int file = 0, count = Number(12); file < count; ++file)
        folder.Write(unit, std::to_string(100 + file) + kNames[Number(4)], Content(second));
    }
  }

  DataFolder folder;

 private:
  static constexpr const char* kNames[] = {"", ".dat", " \xC3\xA4", "~"};

  int Number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

  std::string Content(std::int64_t& second) {
    std::vector<WireRecord> records;
    const int count = Number(8) == 0 ? 0 : Number(3) == 0 ? 720 : Number(20);
    const bool isAway = Number(3) == 0;
    for (int i = 0; i < count; ++i) {
      second += Number(4) == 0 ? 0 : 1 + Number(3);
      if (Number(20'000) == 0) second -= 30;
      records.push_back(RecordAt(second, Coordinate(isAway), Coordinate(isAway)));
      if (Number(5) == 0) records.back().time |= kPackedTimeFlag;
    }
    std::string content = FileOf(records);
    if (Number(150) == 0) content += "!";
    return content;
  }

  std::int32_t Coordinate(bool isAway) {
    const int sign = Number(2) == 0 ? 1 : -1;
    return sign * (isAway ? kAway : 600000 - 3 + (Number(4) == 0 ? Number(6) : 0));
  }

  std::mt19937& random_;
};

TEST(VisitSearch, AgreesWithTheRuleOnRandomFolders) {
  std::mt19937 random(3);
  std::size_t visits = 0, errors = 0;
  for (int round = 0; round < 150; ++round) {
    const RandomFolder made(random);
    VisitQuery query = QueryOf({kOther, "00000000000C", kUnit, "00000000000D"});
    if (round % 3 == 1) query.span = {Second(300 + round), Second(1500 + round)};
    if (round % 3 == 2) query.limit = static_cast<std::size_t>(1 + round % 40);
    const auto literal = oracles::LiteralVisits(made.folder.Path(), query);
    VisitSearch search(made.folder.Path(), query);
    Finish(search);
    ASSERT_EQ(Text(search.Visits()), Text(literal.visits)) << round;
    const std::string code = literal.error == 0 ? "" : "Error " + std::to_string(literal.error);
    ASSERT_EQ(search.Problem().substr(0, code.size()), code) << round;
    ASSERT_EQ(search.Problem().empty(), code.empty()) << round << search.Problem();
    const std::string plain = Text(search.Visits()) + search.Problem();
    if (round % 2 == 0)
      for (const std::string& unit : query.unitIds) StoreSummaries(made.folder.Path(), unit);
    VisitSearch again(made.folder.Path(), query);
    Finish(again);
    ASSERT_EQ(Text(again.Visits()) + again.Problem(), plain) << round << ", with summaries";
    visits += literal.visits.size();
    errors += literal.error != 0;
  }
  EXPECT_GT(visits, 5000u);
  EXPECT_GT(errors, 10u);
  EXPECT_LT(errors, 60u);
}

}  // namespace
}  // namespace pallomir
