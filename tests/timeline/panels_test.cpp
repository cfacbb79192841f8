#include <gmock/gmock.h>

#include "base/packed_time.h"
#include "fakes/fake_view.h"
#include "fakes/room_ports.h"
#include "map/projection.h"
#include "settings/choice_table.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// It is 15:30 of 22 November, five hours west of Greenwich. The window is that day from 3:00.
class PanelsTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  PanelsTest() {
    localClock_.TakeSystemZone();
    onStartup_.Store(static_cast<int>(StartupChoice::kSinceThreeAm));
    pickers_.SetFirstWindow();
    store_.Reset(2);
    SetCentre(map_, 40.62, -75.37);
    SetTileZoom(map_, 12);
  }

  /// A point of unit k at seconds after 7:00 local time.
  void Add(std::size_t k, int seconds, double lat, double lng, std::uint32_t status = 0) {
    DataPoint point;
    point.time = *EncodePackedTime(ToMillis({2026, 11, 22, 12}) + seconds * kSecond);
    point.x = LngToWorldX(DegreesToPositionUnits(lng));
    point.y = LatToWorldY(DegreesToPositionUnits(lat));
    point.status = status;
    store_.Merge(k, std::vector{point});
  }

  ChoiceComplaint complain_ = [](const std::string& text) { ADD_FAILURE() << text; };
  Choice<int> onStartup_{settings_, choice::kOnStartup, complain_};
  Choice<int> unitOfMeasure_{settings_, choice::kUnitOfMeasure, complain_};
  PointStore store_;
  UnitBook book_ = EnumerateUnits({{true, "0123456789AB", "First"}, {true, "0123456789AC", "Second"}});
  DisplayedPoints points_{store_, book_, localClock_, unitOfMeasure_};

  fakes::FakeView shown_;
  int reloads_ = 0;
  int editsEnded_ = 0;
  int settled_ = 0;
  bool isMinimised_ = false;
  bool isLive_ = false;
  PixelSize browser_{1018, 700};
  std::vector<WorldBox> boxes_;
  MapView map_;
  PickerPanel pickers_{shown_,
                       loop_,
                       localClock_,
                       onStartup_,
                       {[this] { ++reloads_; }, [this] { ++editsEnded_; }, [this] { return isLive_; }}};
  MapMarks marks_{shown_,
                  loop_,
                  map_,
                  points_,
                  pickers_.Window(),
                  {[this] { return browser_; }, [this](const WorldBox& box) { boxes_.push_back(box); }}};
  TimelinePanel timeline_{shown_,
                          loop_,
                          trace_,
                          points_,
                          pickers_.Window(),
                          localClock_,
                          {[this] { return isMinimised_; }, [this] { ++settled_; },
                           [this](std::size_t k, std::size_t index) { marks_.ShowPointMarker(k, index); }}};
};

TEST_F(PanelsTest, TheFirstWindowFollowsTheOnStartupChoiceInLocalTime) {
  const std::tuple<StartupChoice, CivilTime, CivilTime> rows[] = {
      {StartupChoice::kNothing, {2026, 11, 22, 20, 30}, {2026, 11, 22, 15, 30}},
      {StartupChoice::kSinceMidnight, {2026, 11, 22, 20, 30}, {2026, 11, 22}},
      {StartupChoice::kSinceThreeAm, {2026, 11, 22, 6, 30}, {2026, 11, 21, 3}},
      {StartupChoice::kLast24Hours, {2026, 11, 22, 20, 30}, {2026, 11, 21, 15, 30}},
      {StartupChoice::kRecent1000, {2026, 11, 22, 20, 30}, {2026, 11, 22, 15, 30}},
  };
  for (const auto& [choice, nowUtc, from] : rows) {
    onStartup_.Store(static_cast<int>(choice));
    clock_.now = ToMillis(nowUtc) + 999;
    pickers_.SetFirstWindow();
    const Millis start = ToMillis(from);
    EXPECT_EQ(pickers_.Window(), (TimeWindow{start, start + kDay})) << static_cast<int>(choice);
  }
  EXPECT_EQ(reloads_, 0);
}

TEST_F(PanelsTest, LocalTimeTakesTheBiasOfTheSeason) {
  using Season = ZoneInfo::Season;
  for (const auto& [season, minutes] :
       {std::pair{Season::kStandard, 310}, {Season::kDaylight, 240}, {Season::kNoDaylightRules, 300}}) {
    clock_.zone = ZoneInfo{300, 10, -60, season};
    EXPECT_TRUE(localClock_.TakeSystemZone());
    EXPECT_EQ(localClock_.Now(), clock_.now - minutes * kMinute);
  }
  clock_.zone.reset();
  EXPECT_FALSE(localClock_.TakeSystemZone());
}

TEST_F(PanelsTest, WhatComesLiveExtendsTheWindow) {
  onStartup_.Store(static_cast<int>(StartupChoice::kNothing));
  pickers_.SetFirstWindow();
  isLive_ = true;
  pickers_.ReturnToCurrentDay();
  const Millis midnight = ToMillis({2026, 11, 22});
  EXPECT_EQ(pickers_.Window(), (TimeWindow{midnight, midnight + kDay}));
  pickers_.ExtendTo(midnight + kDay + kHour);
  EXPECT_EQ(shown_.pickers[1].value, midnight + kDay + kHour);
  EXPECT_EQ(shown_.pickers[1].format, "ddd,MMMd, h tt");
  EXPECT_TRUE(shown_.pickers[1].visible);
  EXPECT_EQ(reloads_, 1);
  pickers_.GotFocus(0);
  pickers_.Changed(0, midnight - kDay);
  pickers_.LostFocus(0);
  pickers_.ExtendTo(midnight + kDay + 2 * kHour);
  EXPECT_EQ(pickers_.Window().end, midnight + kDay + 2 * kHour);
  EXPECT_EQ(shown_.pickers[1].value, midnight) << "what is being chosen stays";
}

TEST_F(PanelsTest, AnEditedWindowIsLoadedWhenTheButtonIsPressed) {
  pickers_.LostFocus(0);
  loop_.Advance(5000);
  EXPECT_FALSE(shown_.pickers[1].visible);
  pickers_.GotFocus(0);
  EXPECT_TRUE(shown_.pickers[1].visible);
  loop_.Advance(5000);
  EXPECT_TRUE(shown_.pickers[1].visible) << "as long as it has the keyboard";
  pickers_.Changed(0, ToMillis({2026, 11, 20, 6}));
  EXPECT_EQ(shown_.pickers[1].value, ToMillis({2026, 11, 21, 6}));
  EXPECT_TRUE(shown_.reload);
  pickers_.Changed(1, ToMillis({2026, 11, 22, 6}));
  pickers_.LostFocus(0);
  loop_.Advance(5000);
  EXPECT_TRUE(shown_.pickers[1].visible) << "two days are not the usual one";
  pickers_.ReloadClicked();
  EXPECT_EQ(reloads_, 1);
  EXPECT_EQ(pickers_.Window().Length(), 2 * kDay);
  EXPECT_FALSE(shown_.reload);
}

TEST_F(PanelsTest, AClosedCalendarShowsTheButtonAndSoDoesTypingAfterIt) {
  pickers_.GotFocus(0);
  pickers_.DroppedDown(0);
  pickers_.ClosedUp(0);
  EXPECT_FALSE(shown_.reload) << "nothing was chosen";
  pickers_.Changed(0, ToMillis({2026, 11, 20}));
  EXPECT_TRUE(shown_.reload);
  pickers_.LostFocus(0);
  pickers_.ReloadClicked();
  EXPECT_FALSE(shown_.pickers[1].visible) << "at once";
  pickers_.DroppedDown(1);
  pickers_.Changed(1, ToMillis({2026, 11, 25}));
  EXPECT_FALSE(shown_.reload);
  pickers_.ClosedUp(1);
  EXPECT_TRUE(shown_.reload);
  EXPECT_EQ(shown_.pointerMoves, 1);
}

TEST_F(PanelsTest, NavigationDropsWhatIsEditedAndLoadsAtOnce) {
  pickers_.Changed(1, ToMillis({2026, 11, 23, 3}));
  EXPECT_TRUE(pickers_.ZoomTo(0.25, 0.5));
  EXPECT_EQ(pickers_.Window(), (TimeWindow{ToMillis({2026, 11, 22, 9}), ToMillis({2026, 11, 22, 15})}));
  EXPECT_TRUE(shown_.pickers[1].visible);
  EXPECT_FALSE(shown_.reload);
  EXPECT_FALSE(pickers_.MoveBy(100'000'000)) << "there are no dates beyond";
  EXPECT_EQ(reloads_, 1);
  pickers_.Load({ToMillis({2026, 11, 22}), ToMillis({2026, 11, 23})});
  pickers_.ShowAll(false);
  EXPECT_FALSE(shown_.pickers[0].visible || shown_.captionVisible);
  pickers_.ShowAll(true);
  EXPECT_TRUE(shown_.pickers[1].visible) << "for a moment, though it is one day";
  loop_.Advance(5000);
  EXPECT_FALSE(shown_.pickers[1].visible);
  pickers_.Close();
  EXPECT_FALSE(pickers_.ZoomOut());
  pickers_.LostFocus(0);
  EXPECT_EQ(editsEnded_, 0);
}

TEST_F(PanelsTest, TheTimelineIsDrawnASecondAfterEachCause) {
  Add(1, 0, 40.62, -75.37);
  timeline_.DataCame();
  loop_.Advance(999);
  EXPECT_EQ(shown_.drawnPictures, 0);
  loop_.Advance(1);
  ASSERT_TRUE(shown_.picture);
  EXPECT_EQ(shown_.timelineRows, 2u);
  EXPECT_EQ(shown_.picture->rows[0].pointCount, 1u);
  EXPECT_EQ(settled_, 1);
  loop_.Advance(5000);
  EXPECT_EQ(shown_.drawnPictures, 1) << "once";
  timeline_.Timeline_Resize();
  timeline_.Close();
  loop_.Advance(1000);
  EXPECT_EQ(shown_.drawnPictures, 1);
}

TEST_F(PanelsTest, WhereNothingIsRedrawnThatIsTold) {
  shown_.timelineVisible = false;
  timeline_.DataCame();
  timeline_.Timeline_Resize();
  EXPECT_EQ(settled_, 2);
  shown_.timelineVisible = true;
  isMinimised_ = true;
  timeline_.Timeline_Resize();
  EXPECT_EQ(settled_, 3);
  isMinimised_ = false;
  store_.Reset(0);
  timeline_.Timeline_Resize();
  EXPECT_EQ(settled_, 4);
}

TEST_F(PanelsTest, AHoveredColumnIsDescribedForTenSeconds) {
  Add(1, 0, 40.62, -75.37, 100);
  Add(1, 3600, 40.63, -75.37);
  timeline_.DataCame();
  loop_.Advance(1000);
  // 7:00 is four hours into a day from 3:00: column 1000 / 6.
  timeline_.Hovered(1, 166);
  EXPECT_EQ(shown_.timelineInfo, "Unit #1 First\n11/22/26 07:00:00 AM\n34.5 mph\n0.00 mi");
  EXPECT_EQ(shown_.marker, (ViewPoint{500, 350}));
  timeline_.Hovered(1, 208);
  EXPECT_THAT(*shown_.timelineInfo, HasSubstr("08:00:00 AM\n0.0 mph\n0.69 mi"));
  shown_.marker.reset();
  timeline_.Hovered(1, 500);
  EXPECT_EQ(shown_.timelineInfo, "Unit #1 First");
  EXPECT_FALSE(shown_.marker);
  loop_.Advance(6000);
  timeline_.HideInfo();
  EXPECT_FALSE(shown_.timelineInfo);
  timeline_.Hovered(2, 0);
  loop_.Advance(9999);
  EXPECT_EQ(shown_.timelineInfo, "Unit #2 Second") << "ten seconds from when it was shown again";
  loop_.Advance(1);
  EXPECT_FALSE(shown_.timelineInfo);
  for (const int row : {0, 3}) timeline_.Hovered(row, 166);
  EXPECT_FALSE(shown_.timelineInfo);
  timeline_.PointsMoved();
  timeline_.Hovered(1, 166);
  EXPECT_EQ(shown_.timelineInfo, "Unit #1 First") << "the picture is older than the points";
}

TEST_F(PanelsTest, APointIsMarkedUntilTheNextTick) {
  Add(1, 0, 40.62, -75.37);
  Add(1, 60, 40.63, -75.37);
  marks_.ShowPointMarker(1, 0);
  EXPECT_EQ(shown_.marker, (ViewPoint{500, 350}));
  loop_.Advance(700);
  marks_.ShowPointMarker(1, 1);
  EXPECT_TRUE(shown_.marker);
  loop_.Advance(300);
  EXPECT_FALSE(shown_.marker) << "a running timer keeps its period";
  for (const auto& [k, index] : {std::pair{0u, 0u}, {1u, 2u}, {2u, 0u}, {3u, 0u}}) {
    marks_.ShowPointMarker(k, index);
    EXPECT_FALSE(shown_.marker) << k << " " << index;
  }
  map_ = {};
  marks_.ShowPointMarker(1, 0);
  EXPECT_FALSE(shown_.marker) << "no zoom is known";
}

TEST_F(PanelsTest, ThePointersShareOfTheWidthDescribesThePointsOfThatTime) {
  Add(1, 0, 40.62, -75.37);
  Add(1, 6 * 3600, 40.63, -75.37, 100);
  Add(2, 60, 40.62, -75.30);
  // 978 pixels stand for the window behind the margin of 20.
  for (const auto& [x, time] : {std::pair(20, "07:00:00 AM"),
                                {20 + 978 * 69 / 240, "07:00:00 AM"},
                                {20 + 978 * 71 / 240, "01:00:00 PM"},
                                {998, "01:00:00 PM"}}) {
    marks_.PointerOverCaption(x);
    EXPECT_THAT(shown_.pointInfos, ElementsAre(HasSubstr(time), HasSubstr("2: Second"))) << x;
  }
  EXPECT_GT(shown_.marker->x, 600) << "the second unit's point is nearer to the pointer";
  marks_.PointerOverMap({510, 99});
  EXPECT_EQ(shown_.pointersOverMap.back(), (ViewPoint{510, 99}));
  EXPECT_EQ(shown_.marker->x, 500);
  unitOfMeasure_.Store(1);
  marks_.PointerOverCaption(998);
  EXPECT_THAT(shown_.pointInfos[0], HasSubstr("55.6 kph\n1.11 km"));
  for (const int outside : {19, 999}) {
    marks_.PointerOverCaption(300);
    marks_.PointerOverCaption(outside);
    EXPECT_THAT(shown_.pointInfos, IsEmpty()) << outside;
  }
  browser_ = {40, 700};
  marks_.PointerOverCaption(20);
  EXPECT_THAT(shown_.pointInfos, IsEmpty()) << "the window is all margin";
}

TEST_F(PanelsTest, APointOffTheMapIsDescribedAndNotMarked) {
  // The map shows 1000 by 700 pixels of 0.00034 degrees.
  for (const auto& [lat, lng] : {std::pair{40.62, -75.8}, {40.62, -74.9}, {40.9, -75.37}, {40.3, -75.37}}) {
    store_.Reset(2);
    Add(1, 0, lat, lng);
    marks_.PointerOverCaption(500);
    EXPECT_THAT(shown_.pointInfos, SizeIs(1));
    EXPECT_FALSE(shown_.marker) << lat << " " << lng;
  }
}

TEST_F(PanelsTest, ABoxIsHandedOnUnlessItIsAClick) {
  marks_.RubberBandDrawn({100, 100}, {103, 300});
  marks_.RubberBandDrawn({100, 100}, {300, 97});
  EXPECT_THAT(boxes_, IsEmpty());
  marks_.RubberBandDrawn({636, 262}, {632, 438});
  ASSERT_THAT(boxes_, SizeIs(1));
  const WorldPoint corner = ViewToWorld(map_, 632, 262, browser_);
  EXPECT_EQ(boxes_[0], (WorldBox{corner.x, corner.x + 4 * 1024, corner.y, corner.y + 176 * 1024}));
  map_ = {};
  marks_.RubberBandDrawn({100, 100}, {300, 300});
  EXPECT_THAT(boxes_, SizeIs(1)) << "no zoom is known";
}

TEST_F(PanelsTest, ClosedMarksShowNothingMore) {
  Add(1, 0, 40.62, -75.37);
  marks_.Open();
  loop_.Advance(300);
  marks_.PointerOverCaption(500);
  marks_.Close();
  EXPECT_FALSE(shown_.marker);
  marks_.PointerOverCaption(500);
  marks_.ShowPointMarker(1, 0);
  marks_.RubberBandDrawn({100, 100}, {300, 300});
  loop_.Advance(1000);
  EXPECT_FALSE(shown_.marker);
  EXPECT_THAT(shown_.pointInfos, IsEmpty());
  EXPECT_THAT(boxes_, IsEmpty());
  EXPECT_EQ(shown_.capturePolls, 3);
}

TEST_F(PanelsTest, AMomentIsPointedAtWhereTheWindowHasIt) {
  const Millis start = ToMillis({2026, 11, 22, 3});
  timeline_.PointAt(2, start + 6 * kHour);
  EXPECT_EQ(shown_.pointedAt, std::pair(2, 250));
  shown_.pointedAt.reset();
  timeline_.PointAt(1, start - 1);
  timeline_.PointAt(1, start + kDay);
  timeline_.PointAt(0, start);
  timeline_.PointAt(3, start);
  EXPECT_FALSE(shown_.pointedAt);
}

TEST_F(PanelsTest, APlaceStaysMarkedWhileTheMapComesToIt) {
  const WorldPoint place{LngToWorldX(DegreesToPositionUnits(-80)), LatToWorldY(DegreesToPositionUnits(30))};
  marks_.ShowPlace(place);
  EXPECT_FALSE(shown_.marker) << "it lies beside the map";
  loop_.Advance(4000);
  SetCentre(map_, 30, -80);
  marks_.HidePointMarker();  // as for each move of the map
  EXPECT_EQ(shown_.marker, (ViewPoint{500, 350}));
  loop_.Advance(1000);
  EXPECT_FALSE(shown_.marker);
  marks_.HidePointMarker();
  EXPECT_FALSE(shown_.marker);
}

}  // namespace
}  // namespace pallomir
