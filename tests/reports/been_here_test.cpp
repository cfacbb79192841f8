#include "reports/been_here.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/fake_web_query.h"
#include "reports/reports_testing.h"

namespace pallomir {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char kVan[] = "00000000000A";
constexpr char kCar[] = "00000000000B";

WireRecord At(const CivilTime& utc, bool isInside = true) {
  return {EncodePackedTime(ToMillis(utc)).value_or(0), isInside ? 0 : 60'000'00, 0, 0};
}

class BeenHereTest : public testing::Test {
 protected:
  void Open(const TimeWindow& window = {kNoon, kNoon + kDay}) {
    VisitTarget target;
    target.name = "0.000000, 0.000000";
    target.area = [this]() -> std::function<SearchArea()> {
      if (isAreaGone_) return {};
      return [] { return SearchArea::Around(0, 0, 0.01); };
    };
    search_.Open(target, {{kVan, "00000000000A - Van"}, {kCar, "00000000000B - Car"}, {"../../../etc", "?"}},
                 window);
  }
  void Search() {
    search_.Search();
    loop_.RunPosted();
  }

  fakes::FakeEventLoop loop_;
  fakes::FakeClock clock_;
  LocalClock local_{clock_};
  DataFolder folder_;
  fakes::FakeWebQuery web_;
  std::vector<std::string> failures_;
  std::vector<std::string> loaded_;
  bool isAreaGone_ = false;
  BeenHere search_{loop_,
                   local_,
                   folder_.Path(),
                   {web_, "127.0.0.1:2480"},
                   {.changed = [] {},
                    .failed = [this](const std::string& message) { failures_.push_back(message); },
                    .load =
                        [this](const std::string& unit, const TimeWindow& days) {
                          loaded_.push_back(unit + " " + IsoText(days.start) + " " + IsoText(days.end));
                        }}};
};

TEST_F(BeenHereTest, ListsLocalTimesAndLoadsTheLocalDays) {
  clock_.now = ToMillis({2026, 11, 23});
  struct Case {
    const char* what;
    int offsetMinutes;  // positive west of Greenwich, as at the start of the program
    std::vector<WireRecord> records;
    const char* line;
    const char* days;
  };
  const std::vector<Case> cases{
      {"over midnight far in the east",
       -840,
       {At({2026, 5, 1, 9, 50}), At({2026, 5, 1, 10, 10}), At({2026, 5, 1, 11}, false)},
       " Unit-1:      05/01/26 11:50:00 PM -- 05/02/26 12:10:00 AM",
       "2026-05-01 00:00:00 2026-05-03 00:00:00"},
      {"over midnight before the change to summer time, by the one offset",
       300,
       {At({2026, 3, 8, 4, 50}), At({2026, 3, 8, 5, 10}), At({2026, 3, 8, 8}, false)},
       " Unit-1:      03/07/26 11:50:00 PM -- 03/08/26 12:10:00 AM",
       "2026-03-07 00:00:00 2026-03-09 00:00:00"},
      {"one record",
       0,
       {At({2026, 5, 1, 9, 50})},
       " Unit-1:      05/01/26 09:50:00 AM",
       "2026-05-01 00:00:00 2026-05-02 00:00:00"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    local_.SetOffset(each.offsetMinutes);
    folder_.Write(kVan, "1", FileOf(each.records));
    Open();
    Search();
    EXPECT_EQ(search_.Text(), std::string(each.line) + "\r\n");
    loaded_.clear();
    search_.Load(0);
    search_.Load(1);
    EXPECT_THAT(loaded_, testing::ElementsAre(std::string(kVan) + " " + each.days));
  }
}

TEST_F(BeenHereTest, TheRangeIsWhatBoxesAndPickersSay) {
  const auto hours = [](int count) { return kNoon + count * kHour; };
  clock_.now = hours(10);
  local_.SetOffset(60);
  std::vector<WireRecord> records;
  for (const int hour : {0, 4, 8, 12}) {
    records.push_back(RecordAt(hour * 3600));
    records.push_back(RecordAt(hour * 3600 + 60, 6'000'000));
  }
  folder_.Write(kVan, "1", FileOf(records));
  folder_.Write(kCar, "1", FileOf({RecordAt(3600)}));
  // Local time is an hour behind.
  const TimeWindow fourToEight{hours(3), hours(7)};
  struct Case {
    bool untilNow, fromBeginning, mostRecentOnly;
    std::size_t unit, visits;
  };
  for (const auto& [untilNow, fromBeginning, mostRecentOnly, unit, visits] : std::vector<Case>{
           {true, true, false, 0, 4},
           {true, false, false, 0, 2},
           {false, true, false, 0, 4},
           {false, false, false, 0, 2},
           {false, false, true, 0, 1},
           {true, true, false, 1, 3},
           {true, true, false, 2, 1},
       }) {
    Open(fourToEight);
    EXPECT_TRUE(search_.choices.untilNow && search_.choices.fromBeginning);
    search_.choices.untilNow = untilNow;
    search_.choices.fromBeginning = fromBeginning;
    search_.choices.mostRecentOnly = mostRecentOnly;
    search_.choices.unit = unit;
    Search();
    EXPECT_EQ(search_.Visits().size(), visits) << untilNow << fromBeginning << mostRecentOnly << unit;
    EXPECT_EQ(search_.Line(0).find("11/22/26 11:00:00 PM") != std::string::npos, mostRecentOnly) << "of all";
    EXPECT_EQ(search_.Line(0).starts_with(" Unit-2:"), unit == 2);
  }
}

TEST_F(BeenHereTest, WhatKeepsASearchFromItsEndIsSaidAndWhatWasFoundStays) {
  clock_.now = kNoon + kDay;
  folder_.Write(kVan, "1", FileOf({RecordAt(0), RecordAt(1200)}));
  folder_.Write(kCar, "1", "torn");
  Open();
  Search();
  EXPECT_THAT(failures_, testing::ElementsAre("Error 65387: Corrupted file -- 1"));
  EXPECT_EQ(search_.Visits().size(), 1u);
  EXPECT_THAT(search_.Status(), StartsWith("Search ended by an error - 1 visit, 20 min in all"));
  EXPECT_EQ(search_.Details(0), "Visit 1 of 1: 00000000000A - Van, 20 min, 2 records");
  EXPECT_EQ(search_.Csv(),
            "unit,entry,exit,records\n00000000000A,2026-11-22T12:00:00Z,2026-11-22T12:20:00Z,2\n");
  search_.choices.unit = 1;
  Search();
  EXPECT_THAT(search_.Status(), StartsWith("Done Searching - 1 visit, 20 min in all (2 records in "));
  search_.choices.unit = 3;
  Search();
  EXPECT_THAT(search_.Status(), HasSubstr("not 12 hexadecimal digits"));
  search_.choices = {.unit = 0, .range = {2, 1}, .untilNow = false, .fromBeginning = false};
  Search();
  EXPECT_EQ(search_.Status(), "The range ends before it starts");
  search_.choices = {};
  isAreaGone_ = true;
  Search();
  EXPECT_THAT(search_.Status(), HasSubstr("not there any more"));
  isAreaGone_ = false;
  std::filesystem::remove_all(folder_.Path());
  Search();
  EXPECT_THAT(search_.Status(), StartsWith("There is no data folder"));
  EXPECT_EQ(failures_.size(), 1u);
  EXPECT_THAT(search_.Visits(), IsEmpty());
}

TEST_F(BeenHereTest, AStoppedSearchKeepsWhatItFoundAndADroppedOneTellsNothing) {
  clock_.now = kNoon + kDay;
  folder_.Write(kVan, "1", FileOf({RecordAt(0)}));
  Open();
  EXPECT_FALSE(search_.Cancel());
  loop_.holdsWork = true;
  search_.Search();
  EXPECT_TRUE(search_.IsSearching());
  EXPECT_EQ(search_.ButtonCaption(), "  Searching...     0");
  EXPECT_TRUE(search_.Cancel());
  loop_.LetWorkEnd();
  EXPECT_FALSE(search_.IsSearching());
  EXPECT_THAT(search_.Status(), StartsWith("Search cancelled - 0 visits"));
  search_.Search();
  Open();  // another click
  loop_.LetWorkEnd();
  EXPECT_EQ(search_.Status(), "");
  search_.Search();
  search_.Search();
  loop_.LetWorkEnd();
  EXPECT_THAT(search_.Status(), StartsWith("Done Searching - 1 visit"));
}

TEST_F(BeenHereTest, ASearchEndsWithinAStepAndSurvivesAnImport) {
  constexpr std::uint64_t kFiles = 60, kInAFile = 720;
  for (std::uint64_t file = 0; file < kFiles; ++file) {
    std::vector<WireRecord> records;
    for (std::uint64_t i = 0; i < kInAFile; ++i)
      records.push_back(RecordAt(static_cast<std::int64_t>(file * kInAFile + i), i == 0 ? 6'000'000 : 0));
    folder_.Write(kVan, std::to_string(1000 + file), FileOf(records));
  }
  const auto order = [&] {
    return VisitOrder{folder_.Path(), {kVan}, [] { return SearchArea::Around(0, 0, 1); }, {}, kMostVisits};
  };
  int asked = 0;
  const auto stopped =
      SearchVisits(order(), [&](const auto& progress) { return ++asked < 1000 && progress.records == 0; });
  EXPECT_TRUE(stopped.isStopped);
  EXPECT_LE(stopped.progress.records, VisitSearch::kRecordsPerBlock + kInAFile);
  EXPECT_GT(stopped.visits.size(), 1u);
  bool isImported = false;
  const auto whole = SearchVisits(order(), [&](const auto& progress) {
    if (progress.records > 0 && !std::exchange(isImported, true)) {
      std::filesystem::rename(folder_.Path() / kVan, folder_.Path() / "old");
      std::filesystem::copy(folder_.Path() / "old", folder_.Path() / kVan);
      std::filesystem::remove_all(folder_.Path() / "old");
    }
    return true;
  });
  EXPECT_TRUE(isImported);
  EXPECT_EQ(whole.problem, "");
  ASSERT_EQ(whole.visits.size(), kFiles);
  EXPECT_EQ(whole.visits.back().records, kInAFile - 1);
}

TEST_F(BeenHereTest, TheServerIsAskedAndItsUnitsAreOurs) {
  Open();
  search_.choices.atServer = true;
  search_.Search();
  EXPECT_THAT(web_.address, StartsWith("http://127.0.0.1:2480/visits?lat="));
  EXPECT_THAT(web_.address, HasSubstr("&unit=00000000000A&unit=00000000000B&to="));
  EXPECT_TRUE(search_.IsSearching());
  const auto told = [](const char* unit, const char* day) {
    return std::string(R"({"unit":")") + unit + R"(","entry":"2026-05-0)" + day +
           R"(T12:00:00Z","exit":"2026-05-0)" + day + R"(T12:00:05Z","records":2})";
  };
  web_.AnswerIt({200,
                 R"({"visits":[)" + told(kCar, "2") + "," + told("0000000000FF", "1") + "," +
                     told(kVan, "1") + R"(],"records":9,"files":1,"problem":"Error 65387"})",
                 ""});
  EXPECT_EQ(search_.Text(),
            " Unit-2:      05/02/26 12:00:00 PM -- 05/02/26 12:00:05 PM\r\n"
            " Unit-1:      05/01/26 12:00:00 PM -- 05/01/26 12:00:05 PM\r\n");
  EXPECT_THAT(failures_, testing::ElementsAre("Error 65387"));
  const std::vector<std::pair<WebQuery::Answer, const char*>> refusals{
      {{0, "", "Connection refused"}, "The server can't be asked: Connection refused"},
      {{403, "Only from here.", ""}, "The server refuses (403): Only from here."},
      {{200, "<html>", ""}, "The server's answer is no list of visits"}};
  for (const auto& [answer, status] : refusals) {
    search_.Search();
    web_.AnswerIt(answer);
    EXPECT_EQ(search_.Status(), status);
    EXPECT_FALSE(search_.IsSearching());
    EXPECT_THAT(search_.Visits(), IsEmpty());
  }
  search_.Search();
  EXPECT_TRUE(search_.Cancel());
  EXPECT_EQ(web_.cancelled, 1);
  EXPECT_EQ(search_.Status(), "Search cancelled");
}

TEST(VisitText, CaptionsAndStays) {
  EXPECT_EQ(SearchingCaption(19'999), "  Searching...     0");
  EXPECT_EQ(SearchingCaption(20'000 * 12), "  Searching...    12");
  EXPECT_EQ(SearchingCaption(20'000 * 1234), "  Searching...   1234");
  EXPECT_EQ(Grouped(999) + ' ' + Grouped(1234567), "999 1,234,567");
  EXPECT_EQ(
      DurationText(59 * kSecond) + '|' + DurationText(kDay + 2 * kMinute) + '|' + DurationText(3 * kHour),
      "59 s|1 d 2 min|3 h");
}

}  // namespace
}  // namespace pallomir
