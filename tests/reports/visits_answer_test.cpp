#include "reports/visits_answer.h"

#include <gmock/gmock.h>

#include "base/packed_time.h"
#include "fakes/fake_system.h"
#include "reports/visit_calendar.h"
#include "reports/visit_search.h"

namespace pallomir {
namespace {

std::string Answer(const std::string& visits) {
  return R"({"visits":[)" + visits + R"(],"records":40,"files":2,"problem":"torn"})";
}

std::string ToldAs(const std::string& entry, const std::string& exit, const std::string& records = "3") {
  return R"({"unit":"00000000000A","entry":")" + entry + R"(","exit":")" + exit + R"(","records":)" +
         records + "}";
}

TEST(VisitsAnswer, WhatTheServerTells) {
  const std::string good = ToldAs("2026-11-22T12:00:00Z", "2026-11-22T12:00:01Z");
  const auto read = ParseVisitsAnswer(Answer(good));
  const auto& answer = std::get<VisitsAnswer>(read);
  ASSERT_EQ(answer.visits.size(), 1u);
  EXPECT_EQ(answer.visits[0].unitId, "00000000000A");
  EXPECT_EQ(answer.visits[0].exit, EncodePackedTime(ToMillis({2026, 11, 22, 12, 0, 1})));
  EXPECT_EQ(answer.visits[0].records, 3u);
  EXPECT_EQ(answer.records, 40u);
  EXPECT_EQ(answer.problem, "torn");
  std::string many = good;
  for (std::size_t i = 0; i < kMostVisits; ++i) many += "," + good;
  EXPECT_EQ(std::get<VisitsAnswer>(ParseVisitsAnswer(Answer(many))).visits.size(), kMostVisits);
}

TEST(VisitsAnswer, WhatIsNoneIsRefused) {
  const std::string time = "2026-11-22T12:00:00Z";
  for (const std::string& text :
       {std::string(), std::string("[]"), std::string("{}"), std::string(R"({"visits":{}})"),
        std::string(1000, '['), Answer("1"), Answer("{}"), Answer(ToldAs(time, "2026-11-22T11:59:59Z")),
        Answer(ToldAs("2026-02-30T00:00:00Z", time)), Answer(ToldAs("1999-12-31T23:59:59Z", time)),
        Answer(ToldAs("2026-11-22 12:00:00Z", time)), Answer(ToldAs(time, time, "4294967296"))})
    EXPECT_TRUE(std::holds_alternative<std::string>(ParseVisitsAnswer(text))) << text;
}

TEST(VisitsAnswer, TheQuestionNamesWhatIsAsked) {
  VisitsQuestion question{40.5, -74.25, 25, {"00000000000A", "00000000000B"}, {}, 500};
  EXPECT_EQ(VisitsPath(question),
            "/visits?lat=40.5000000&lng=-74.2500000&zoom=22&unit=00000000000A&unit=00000000000B&limit=500");
  const auto packed = [](int minute) { return *EncodePackedTime(ToMillis({2026, 5, 1, 0, minute, 0})); };
  question = {0, 0, 3, {}, {packed(1), packed(2)}, 1};
  EXPECT_EQ(
      VisitsPath(question),
      "/visits?lat=0.0000000&lng=0.0000000&zoom=3&from=2026-05-01T00:01:00Z&to=2026-05-01T00:02:00Z&limit=1");
}

TEST(VisitCalendar, VisitsAreCutAtTheLocalMidnights) {
  const fakes::FakeClock none;
  LocalClock clock(none);
  clock.SetOffset(60);
  const auto packed = [](const CivilTime& time) { return *EncodePackedTime(ToMillis(time)); };
  const std::vector<Visit> visits{
      {1, packed({2026, 5, 3, 0, 50}), packed({2026, 5, 3, 1, 10}), 2},
      {0, packed({2026, 5, 2, 13}), packed({2026, 5, 2, 13}), 1},
      {0, packed({2001, 1, 1}), packed({2026, 4, 30, 13}), 9},
  };
  const auto days = DaysOfVisits(visits, clock);
  ASSERT_EQ(days.size(), kMostVisitDays);
  EXPECT_EQ(days[0].day, ToMillis({2026, 5, 3}));
  EXPECT_EQ(days[0].stays, (std::vector<DayStay>{{0, 1, 0, 10}}));
  EXPECT_EQ(days[1].stays, (std::vector<DayStay>{{0, 1, 1430, 1440}, {1, 0, 720, 720}}));
  EXPECT_EQ(days[2].stays, (std::vector<DayStay>{{2, 0, 0, 720}})) << "a day without a visit is left out";
  EXPECT_EQ(days[3].stays, (std::vector<DayStay>{{2, 0, 0, 1440}}));
  const std::vector<SearchedUnit> units{{"", "Van", 0}, {"", "Car", 0}};
  EXPECT_EQ(SentenceOf(days[1], units), "Sat 05/02/26: Car 11:50 PM to midnight; Van 12:00 PM");
}

}  // namespace
}  // namespace pallomir
