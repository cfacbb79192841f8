#include "timeline/tick_scale.h"

#include <gtest/gtest.h>

#include <random>

namespace pallomir {
namespace {

TimeWindow Window(const CivilTime& start, const CivilTime& end) { return {ToMillis(start), ToMillis(end)}; }

// "column:text" of every label.
std::string Labels(const TickScale& scale) {
  std::string labels;
  for (const Tick& tick : scale.ticks)
    if (!tick.label.empty()) labels += std::to_string(tick.column) + ":" + tick.label + " ";
  return labels;
}

TEST(TickScale, StepsAndLabelsFollowTheLengthOfTheWindow) {
  const struct {
    CivilTime start, end;
    int width, covering, drawn;
    std::size_t ticks;
    std::string labels;
  } cases[] = {
      // A day: quarters of an hour, labels every 3 hours. Midnight inside.
      {{2026, 11, 16},
       {2026, 11, 17},
       1000,
       8,
       4,
       97,
       "0:11/16 125:3a 250:6a 375:9a 500:12n 625:3p 750:6p 875:9p 1000:11/17 "},
      // Minutes: too short for a label, and with a full hour among them.
      {{2026, 1, 1, 7, 3}, {2026, 1, 1, 7, 4}, 400, 2, 1, 4, ""},
      {{2026, 1, 1, 7, 3, 20}, {2026, 1, 1, 7, 23, 20}, 400, 5, 1, 80, "33:5 133:10 233:15 333:20 "},
      {{2026, 1, 1, 7, 50}, {2026, 1, 1, 8, 20}, 400, 5, 2, 30, "133:8a 333:15 "},
      // Weeks and a month that cuts one short, months and a year, weeks that meet the first by chance.
      {{2011, 8, 29}, {2011, 9, 30}, 320, 11, 7, 64, "30:9/11 90:9/7 160:9/14 230:9/21 300:9/28 "},
      {{2010, 11, 15}, {2011, 2, 23}, 500, 12, 8, 100, "80:12/10 235:2011 390:2/11 "},
      {{2010, 11, 15}, {2012, 1, 15}, 500, 12, 9, 60, "483:2012 "},
      // Years, and more of them than there are steps.
      {{2008, 7, 1}, {2013, 7, 1}, 600, 12, 10, 60, "60:2009 180:2010 300:2011 420:2012 540:2013 "},
      {{100, 1, 1}, {4100, 1, 1}, 16383, 12, 12, 4000, ""},
      // Where years lie too close together: every fifth, with a label each half century.
      {{1700, 1, 1},
       {2100, 1, 1},
       1000,
       17,
       13,
       81,
       "0:1700 124:1750 249:1800 374:1850 499:1900 624:1950 749:2000 875:2050 1000:2100 "},
      // A month from the 31st ends with the shorter one; a drawn step beyond the covering one, without a rank
      // too.
      {{2026, 1, 31}, {2026, 3, 1}, 5, 11, 11, 0, ""},
      {{2026, 1, 1, 0, 0, 1}, {2026, 1, 1, 0, 0, 9}, 1, 1, 2, 0, ""},
      {{2026, 1, 1, 0, 0, 0}, {2026, 1, 1, 0, 0, 9}, 1, 1, 2, 1, ""},
  };
  for (const auto& c : cases) {
    const auto scale = BuildTickScale(Window(c.start, c.end), c.width);
    ASSERT_TRUE(scale) << c.labels;
    EXPECT_EQ(scale->coveringStep, c.covering) << c.labels;
    EXPECT_EQ(scale->drawnStep, c.drawn) << c.labels;
    EXPECT_EQ(scale->ticks.size(), c.ticks) << c.labels;
    EXPECT_EQ(Labels(*scale), c.labels);
  }
}

TEST(TickScale, NothingWhereNothingCanBeShown) {
  const CivilTime start{2026, 11, 16};
  const std::pair<TimeWindow, int> cases[] = {
      {Window(start, {2026, 11, 17}), -5},
      {Window(start, {2026, 11, 17}), kMaxStripWidth + 1},
      {Window(start, {2026, 11, 15}), 100},
      {{FirstMoment() - 1, ToMillis(start)}, 1000},
      {{ToMillis(start), LastMoment() + 1}, 1000},
      {{FirstMoment(), LastMoment()}, 39},  // millennia lie 4 pixels apart, which is not enough
  };
  for (const auto& [window, width] : cases) EXPECT_FALSE(BuildTickScale(window, width)) << width;
  EXPECT_TRUE(BuildTickScale({FirstMoment(), LastMoment()}, 40));
  const TimeWindow all{FirstMoment(), LastMoment()};
  ASSERT_TRUE(IsDrawable(all, kMaxStripWidth));
  EXPECT_EQ(ColumnOf(all, kMaxStripWidth, LastMoment() - 1), kMaxStripWidth - 1) << "no overflow";
}

TEST(TickScale, GridsRollBackOverTheStartOfMonthAndYear) {
  const std::tuple<int, CivilTime, CivilTime> cases[] = {
      {1, {2026, 3, 5, 4, 7, 44}, {2026, 3, 5, 4, 7, 30}},
      {2, {2026, 3, 5, 4, 7, 44}, {2026, 3, 5, 4, 7}},
      {4, {2026, 3, 5, 4, 59}, {2026, 3, 5, 4, 45}},
      {6, {1950, 3, 5, 23, 59}, {1950, 3, 5, 21}},
      {7, {1950, 3, 5, 11, 59}, {1950, 3, 5}},
      {9, {2024, 3, 6, 23}, {2024, 2, 29}},
      {9, {2024, 1, 1}, {2023, 12, 31}},
      {9, {2024, 1, 31}, {2024, 1, 28}},
      {10, {2024, 2, 29, 5}, {2024, 2, 1}},
      {11, {2024, 2, 29}, {2023, 12, 1}},
      {11, {2024, 12, 31}, {2024, 12, 1}},
      {11, {2024, 8, 31}, {2024, 6, 1}},
      {13, {2024, 12, 31, 23}, {2020, 1, 1}},
      {16, {2099, 12, 31, 23}, {2000, 1, 1}},
  };
  for (const auto& [step, time, floor] : cases)
    EXPECT_EQ(IsoText(FloorToStep(ToMillis(time), step)), IsoText(ToMillis(floor))) << step;
}

TEST(TickScale, EveryWindowAndWidthGivesAnOrderlyScale) {
  std::mt19937_64 random(20261122);
  const auto between = [&random](Millis low, Millis high) {
    return std::uniform_int_distribution<Millis>(low, high)(random);
  };
  for (int i = 0; i < 4000; ++i) {
    // Lengths spread over the orders of magnitude, from a second to some thousand years.
    const Millis length = between(1, 25) * (Millis{1} << between(10, 42));
    const Millis start = between(ToMillis({1900, 1, 1}), ToMillis({2300, 1, 1}));
    const auto width = static_cast<int>(between(1, 4000));
    const auto scale = BuildTickScale({start, start + length}, width);
    if (!scale) continue;
    int before = -1;
    for (const Tick& tick : scale->ticks) {
      ASSERT_GT(tick.column, before) << IsoText(start) << " " << length << " " << width;
      ASSERT_TRUE(tick.column < width || (tick.column == width && !tick.label.empty()));
      ASSERT_EQ(tick.height, 2 * (tick.rank + 1 - scale->drawnStep));
      before = tick.column;
    }
    ASSERT_LE(scale->ticks.size(), static_cast<std::size_t>(width) / 2 + 2);
  }
}

}  // namespace
}  // namespace pallomir
