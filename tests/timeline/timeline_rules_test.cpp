#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "timeline/point_text.h"
#include "timeline/text_rows.h"
#include "timeline/time_window.h"
#include "timeline/timeline_drag.h"
#include "timeline/timeline_layout.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int kWidth = 15000;  // twips: 1000 pixels

TEST(TimeWindow, NavigationMovesAndZooms) {
  const Millis day = ToMillis({2026, 11, 16});
  const TimeWindow whole{day, day + kDay};
  EXPECT_EQ(ZoomedTo(whole, 0.25, 0.5), (TimeWindow{day + 6 * kHour, day + 12 * kHour}));
  const TimeWindow backwards{day + kDay, day};
  EXPECT_EQ(ZoomedIn(backwards), (TimeWindow{day + 16 * kHour, day + 8 * kHour}));
}

TEST(TimeWindow, ItGoesAsFarAsDatesDoAndNoFurther) {
  const Millis year = 365 * kDay;
  const struct {
    const char* name;
    TimeWindow window;
    int periods;
    bool back, out;
  } cases[] = {
      {"up to the first moment", {FirstMoment() + year, FirstMoment() + 2 * year}, -1, true, true},
      {"a millisecond beyond it", {FirstMoment() + year - 1, FirstMoment() + 2 * year - 1}, -1, false, false},
      {"up to the last moment", {LastMoment() - 2 * year, LastMoment() - year}, 1, true, true},
      {"a millisecond beyond that", {LastMoment() - 2 * year + 1, LastMoment() - year + 1}, 1, false, false},
      {"nine times all there is", {FirstMoment(), LastMoment()}, 9, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MovedBy(c.window, c.periods).has_value(), c.back) << c.name;
    EXPECT_EQ(ZoomedOut(c.window).has_value(), c.out) << c.name;
  }
}

TEST(TimelineDrag, PressMoveAndRelease) {
  const struct {
    const char* name;
    double press, release;
    bool band;
    std::optional<WindowShares> shares;
  } cases[] = {
      {"3 pixels are a click", 1500, 1545, false, std::nullopt},
      {"beyond 3 pixels the band shows, but 4 zoom", 1500, 1559, true, std::nullopt},
      {"4 pixels zoom", 1500, 1560, true, WindowShares{1515.0 / kWidth, 1575.0 / kWidth}},
      {"right to left is left to right", 1560, 1500, true, WindowShares{1515.0 / kWidth, 1575.0 / kWidth}},
      {"out at the left", 2985, -900, true, WindowShares{0, 0.2}},
      {"out at the right", 14985 - 7500, 99999, true, WindowShares{0.5, 1}},
  };
  for (const auto& c : cases) {
    TimelineDrag drag;
    EXPECT_FALSE(drag.TimelineMouse(MouseAction::kDown, true, c.press, kWidth));
    drag.TimelineMouse(MouseAction::kMove, true, c.release, kWidth);
    EXPECT_EQ(drag.Band().has_value(), c.band) << c.name;
    EXPECT_EQ(drag.TimelineMouse(MouseAction::kUp, true, c.release, kWidth), c.shares) << c.name;
    EXPECT_FALSE(drag.IsActive() || drag.Band());
  }
}

TEST(TimelineDrag, OnlyTheLeftButtonDragsAndALostOneEndsIt) {
  TimelineDrag drag;
  const auto mouse = [&drag](MouseAction action, bool left, double x) {
    return drag.TimelineMouse(action, left, x, kWidth);
  };
  mouse(MouseAction::kDown, false, 100);
  EXPECT_FALSE(drag.IsActive());
  EXPECT_FALSE(mouse(MouseAction::kUp, true, 5000)) << "a release without a press";
  mouse(MouseAction::kDown, true, 100);
  EXPECT_FALSE(mouse(MouseAction::kUp, false, 5000));
  EXPECT_TRUE(drag.IsActive()) << "another button goes up during the drag";
  mouse(MouseAction::kMove, false, 5000);
  EXPECT_FALSE(drag.IsActive()) << "the release was lost";
  mouse(MouseAction::kDown, true, 100);
  drag.Cancel();
  EXPECT_FALSE(mouse(MouseAction::kUp, true, 5000));
}

TEST(TimelineLayout, RowsKeepTheirHeightsAndTheFrameItsThird) {
  for (const int rows : {1, 4, 20, 200}) {
    const TimelineLayout layout(1020, TimelineContentHeight(rows), rows);
    EXPECT_EQ(layout.ScaleWidth(), 1000);
    EXPECT_EQ(layout.Time(rows), (PixelRect{10, 20 + (rows - 1) * 21, 1000, 10}));
    EXPECT_EQ(layout.Data(rows), (PixelRect{10, 30 + (rows - 1) * 21, 1000, 8})) << rows;
    EXPECT_EQ(TimelineFrameHeight(rows, 700), std::min(20 + rows * 21, 233));
  }
  EXPECT_EQ(TimelineFrameHeight(0, 700), 0);
  EXPECT_EQ(TimelineLayout(15, 0, 3).ScaleWidth(), 0);
}

TEST(TimelineLayout, APointBelongsToTheRowUnderIt) {
  const TimelineLayout layout(120, TimelineContentHeight(2), 2);
  const std::tuple<int, int, int> cases[] = {{10, 19, 0}, {10, 20, 1}, {109, 37, 1}, {110, 30, 0},
                                             {9, 30, 0},  {50, 38, 0}, {50, 40, 0},  {50, 41, 2},
                                             {50, 58, 2}, {50, 59, 0}, {50, 62, 0},  {50, -5, 0}};
  for (const auto& [x, y, row] : cases) EXPECT_EQ(layout.RowAt(x, y), row) << x << "," << y;
}

TEST(TimelineLayout, ABoxStaysInsideItsArea) {
  const PixelRect map{0, 0, 800, 500};
  EXPECT_EQ(PlaceBeside(100, 550, {200, 60}, map), (PixelRect{112, 440, 200, 60}));
  EXPECT_EQ(PlaceBeside(790, 550, {200, 60}, map), (PixelRect{578, 440, 200, 60}));
  EXPECT_EQ(PlaceBeside(100, 550, {900, 600}, map), (PixelRect{0, 0, 900, 600})) << "larger than the area";
}

TEST(TextRows, BoxesStandInCentredRowsInsideTheirArea) {
  const PixelRect area{60, 4, 300, 100};
  const auto places = [&area](const std::vector<PixelSize>& boxes) {
    return PlaceInRows(boxes, area, 250, 10);
  };
  EXPECT_THAT(places({{100, 40}, {90, 30}, {90, 20}}),
              ElementsAre(PixelRect{60, 4, 100, 40}, PixelRect{170, 4, 90, 30}, PixelRect{270, 4, 90, 20}))
      << "as wide as the area, so not about the centre";
  EXPECT_THAT(places({{100, 40}, {90, 30}, {91, 46}}),
              ElementsAre(PixelRect{150, 4, 100, 40}, PixelRect{260, 4, 90, 30}, PixelRect{205, 54, 91, 46}));
  EXPECT_THAT(places({{200, 40}, {200, 50}}), SizeIs(2));
  EXPECT_THAT(places({{200, 40}, {200, 51}}), SizeIs(1)) << "the second row would end below the area";
  EXPECT_THAT(places({{900, 400}, {20, 20}}), ElementsAre(PixelRect{60, 4, 300, 400})) << "cut, not lost";
}

TEST(TextRows, TextsKeepClearOfTheMapsControls) {
  EXPECT_EQ(AreaForTexts({1280, 700}), (PixelRect{64, 4, 960, 692}));
  EXPECT_EQ(AreaForTexts({640, 300}).left, 64);
  EXPECT_EQ(AreaForTexts({639, 300}), (PixelRect{4, 80, 631, 216})) << "below them";
  EXPECT_EQ(AreaForTexts({5, 5}), (PixelRect{4, 80, 0, 0}));
}

TEST(PointText, SpeedAndDistanceInBothUnits) {
  const PointFacts point{ToMillis({2026, 11, 16, 15, 4, 5}), 0xFE00 | 175, 12.345};
  const UnitLabel van{3, "Van: North"};
  EXPECT_EQ(PointText(van, point, LengthUnit::kMiles),
            "3: Van: North\n11/16/26 03:04:05 PM\n60.4 mph\n12.35 mi");
  EXPECT_EQ(HoverText(van, point, LengthUnit::kKilometers),
            "Unit #3 Van: North\n11/16/26 03:04:05 PM\n97.2 kph\n19.87 km");
  EXPECT_EQ(HoverText(van, std::nullopt, LengthUnit::kMiles), "Unit #3 Van: North");
  EXPECT_EQ(SpeedText(511, LengthUnit::kMiles), "176.4 mph");
}

}  // namespace
}  // namespace pallomir
