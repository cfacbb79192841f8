#include "timeline/timeline_cursor.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

using Step = TimelineCursor::Step;

const Millis kStart = ToMillis({2026, 11, 16});
const TimeWindow kDayWindow{kStart, kStart + kDay};

struct Stroke {
  bool forward;
  Step step = Step::kTick;
  bool selects = false;
};

TEST(TimelineCursor, GoesFromStopToStopAndSelects) {
  // 1,000 columns: ticks each 15 minutes, labels each 3 hours.
  const auto scale = BuildTickScale(kDayWindow, 1000);
  const struct {
    const char* name;
    std::vector<Stroke> strokes;
    Millis at;  // minutes from the window's start
    std::optional<std::pair<Millis, Millis>> range;
  } cases[] = {
      {"at first", {}, 0, {}},
      {"ticks", {{true}, {true}, {false}}, 15, {}},
      {"labels", {{true}, {true, Step::kLabel}, {true, Step::kLabel}}, 360, {}},
      {"back to a label", {{true, Step::kEnd}, {false, Step::kLabel}}, 21 * 60, {}},
      {"the end counts as a label", {{true, Step::kEnd}, {false}, {true, Step::kLabel}}, 24 * 60, {}},
      {"stays at the end", {{true, Step::kEnd}, {true}, {true, Step::kLabel}}, 24 * 60, {}},
      {"selects", {{true}, {true, Step::kTick, true}, {true, Step::kTick, true}}, 45, {{15, 45}}},
      {"selects back", {{true, Step::kEnd}, {false, Step::kLabel, true}}, 1260, {{1260, 1440}}},
      {"nothing where it began", {{true, Step::kTick, true}, {false, Step::kTick, true}}, 0, {}},
      {"dropped by a plain step", {{true, Step::kTick, true}, {true}}, 30, {}},
  };
  for (const auto& row : cases) {
    TimelineCursor cursor;
    cursor.SetScale(kDayWindow, scale);
    for (const Stroke& stroke : row.strokes) cursor.Move(stroke.forward, stroke.step, stroke.selects);
    EXPECT_EQ(cursor.Time(), kStart + row.at * kMinute) << row.name;
    const auto range = cursor.Range();
    ASSERT_EQ(range.has_value(), row.range.has_value()) << row.name;
    if (!range) continue;
    EXPECT_EQ(*range,
              (TimeWindow{kStart + row.range->first * kMinute, kStart + row.range->second * kMinute}));
    const auto shares = cursor.Shares();
    EXPECT_EQ(ZoomedTo(kDayWindow, shares->from, shares->to), *range) << row.name << ": to the second";
  }
}

TEST(TimelineCursor, KeepsItsMomentInAnotherWindowAsFarAsThatHasIt) {
  TimelineCursor cursor;
  cursor.SetScale(kDayWindow, BuildTickScale(kDayWindow, 1000));
  cursor.Move(true, Step::kLabel, false);
  cursor.Move(true, Step::kLabel, true);
  cursor.SetScale(kDayWindow, BuildTickScale(kDayWindow, 500));
  EXPECT_TRUE(cursor.Range()) << "the same window, drawn anew";
  const TimeWindow around{kStart + kHour, kStart + 9 * kHour};
  cursor.SetScale(around, BuildTickScale(around, 500));
  EXPECT_FALSE(cursor.Range());
  EXPECT_EQ(cursor.Time(), kStart + 6 * kHour);
  EXPECT_EQ(cursor.Column(cursor.Time(), 800), 500);
  const TimeWindow later{kStart + kDay, kStart + 2 * kDay};
  cursor.SetScale(later, std::nullopt);
  EXPECT_EQ(cursor.Time(), later.start);
  cursor.Move(true, Step::kTick, true);
  EXPECT_EQ(cursor.Range(), later) << "without a scale the ends are the stops";
  cursor.SetScale({kStart, kStart}, std::nullopt);
  cursor.Move(true, Step::kEnd, true);
  EXPECT_FALSE(cursor.Shares());
}

TEST(TimelineCursor, SaysWhatARowAndItsCursorAre) {
  std::vector<DataPoint> points(4);
  const Millis times[] = {-kMinute, 0, kHour, kDay};
  for (std::size_t i = 0; i < 4; ++i) points[i].time = *EncodePackedTime(kStart + times[i]);
  const TimelineUnit units[] = {{"Van", 0, points}, {"Bus", 0, std::span(points).first(2)}};
  const TimelinePicture picture = DrawTimeline(kDayWindow, 0, 1000, units);
  const std::string range = "11/16/26 12:00:00 AM to 11/17/26 12:00:00 AM";
  EXPECT_EQ(TimelineRowText(picture, 0), "Van, " + range + ", 2 points");
  EXPECT_EQ(TimelineRowText(picture, 1), "Bus, " + range + ", 1 point");
  TimelineCursor cursor;
  cursor.SetScale(picture.window, picture.scale);
  EXPECT_EQ(TimelineCursorText(cursor, "5.0 mph"), "11/16/26 12:00:00 AM, point 5.0 mph");
  cursor.Move(true, Step::kLabel, true);
  EXPECT_EQ(
      TimelineCursorText(cursor, ""),
      "Selected 11/16/26 12:00:00 AM to 11/16/26 03:00:00 AM, no point here, Enter loads the selection");
}

}  // namespace
}  // namespace pallomir
