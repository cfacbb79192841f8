#include "timeline/data_strip.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace pallomir {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr int kOffset = 300;

// The rule as it reads: every point is drawn in turn, and its column remembers it.
ColumnTable LiteralColumns(const std::vector<DataPoint>& points, const TimeWindow& window, int width) {
  ColumnTable columns(static_cast<std::size_t>(width), kNoPoint);
  std::int32_t j = 0;
  for (const DataPoint& point : points) {
    const Millis time = *DecodePackedTime(point.time) - kOffset * kMinute;
    const long double share =
        static_cast<long double>(time - window.start) * width / static_cast<long double>(window.Length());
    const auto x = static_cast<std::int64_t>(std::floor(share));
    if (x >= 0 && x < width) columns[static_cast<std::size_t>(x)] = j;
    ++j;
  }
  return columns;
}

DataPoint PointAt(Millis local, bool flag = false) {
  DataPoint point;
  point.time = *EncodePackedTime(local + kOffset * kMinute) | (flag ? kPackedTimeFlag : 0);
  return point;
}

TEST(DataStrip, ColumnsKeepTheLastPointAndTheWindowIsOpenAtItsEnd) {
  const Millis start = ToMillis({2026, 11, 16, 22});
  const std::vector<DataPoint> points{PointAt(start - kSecond),
                                      PointAt(start, true),
                                      PointAt(start + 59 * kSecond),
                                      PointAt(start + kMinute, true),
                                      PointAt(start + 3 * kMinute - kSecond),
                                      PointAt(start + 4 * kMinute)};
  const TimelineUnit unit{"Van", 0x800000, points};
  const auto picture = DrawTimeline({start, start + 4 * kMinute}, kOffset, 4, std::span(&unit, 1));
  EXPECT_THAT(picture.rows[0].columns, ElementsAre(2, 3, 4, kNoPoint));
  EXPECT_EQ(PointUnder(picture, 1, 2), 4);
  for (const auto& [row, column] : {std::pair{1, 3}, {1, 4}, {1, -1}, {0, 0}, {2, 0}})
    EXPECT_EQ(PointUnder(picture, row, column), kNoPoint) << row << " " << column;
  const auto without = DrawTimeline({start, start}, kOffset, 4, std::span(&unit, 1));
  EXPECT_FALSE(without.scale);
  EXPECT_EQ(PointUnder(without, 1, 0), kNoPoint);
}

TEST(DataStrip, WindowsBeyondThePackedYearsHaveNoPointsThere) {
  const std::vector<DataPoint> points{PointAt(ToMillis({2000, 1, 1})), PointAt(ToMillis({2031, 12, 31}))};
  const auto columns = [&points](const TimeWindow& window) {
    return PointsByColumn(points, ColumnStarts(window, kOffset, 100));
  };
  EXPECT_THAT(columns({ToMillis({1900, 1, 1}), ToMillis({1999, 12, 31})}), Each(kNoPoint));
  EXPECT_THAT(columns({ToMillis({2032, 1, 1}), ToMillis({2100, 1, 1})}), Each(kNoPoint));
  const ColumnTable whole = columns({ToMillis({1950, 1, 1}), ToMillis({2050, 1, 1})});
  EXPECT_EQ(whole[49], 0);
  EXPECT_EQ(whole[81], 1);
}

TEST(DataStrip, SearchingGivesWhatDrawingPointByPointGives) {
  std::mt19937_64 random(7);
  const auto between = [&random](Millis low, Millis high) {
    return std::uniform_int_distribution<Millis>(low, high)(random);
  };
  for (int i = 0; i < 400; ++i) {
    std::vector<DataPoint> points;
    Millis time = ToMillis({2026, 2, 26}) + between(0, 1000) * kSecond;
    const Millis gap = Millis{1} << between(0, 14);
    for (Millis n = between(0, 300); n > 0; --n)
      points.push_back(PointAt(time += between(1, gap) * kSecond, random() % 3 == 0));
    // Off the whole seconds and narrower than a second a column at times.
    const Millis start = ToMillis({2026, 2, 26}) + between(-kHour, kHour);
    const TimeWindow window{start, start + between(1, kHour << between(0, 8))};
    const auto width = static_cast<int>(between(1, 4000));
    ASSERT_EQ(PointsByColumn(points, ColumnStarts(window, kOffset, width)),
              LiteralColumns(points, window, width));
  }
}

}  // namespace
}  // namespace pallomir
