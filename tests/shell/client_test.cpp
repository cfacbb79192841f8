#include "commands/command_table.h"
#include "shell/client_testing.h"

namespace pallomir {
namespace {

TEST_F(ClientTest, TheFirstBatchIsFittedWhenThePageReportsItsMap) {
  StartStreaming();
  Arrive(PacketOf({Record(0, 40.60, -75.40), Record(60, 40.64, -75.34)}));
  Command("S5");
  EXPECT_THAT(browser.Written("TxtL"), IsEmpty());
  Command("S1");
  EXPECT_THAT(browser.Written("TxtL"), ElementsAre(StartsWith("14")));
  EXPECT_THAT(TileFiles(), IsEmpty()) << "no zoom is known yet";
  Command("M40.620000,-75.370000");
  Command("Z12");
  EXPECT_FALSE(TileFiles().empty()) << "the first zoom report makes good for the rebuild that had no zoom";
}

TEST_F(ClientTest, APageAfterALostOneShowsWhatThatOneShowed) {
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.60, -75.40), Record(60, 40.64, -75.34)}));
  for (const int zoom : {3, 9, 15, 19}) {
    Command("M40.500000,-75.250000");
    Command("Z" + std::to_string(zoom));
    browser.pageLost("gone");
    Command("S1");
    EXPECT_EQ(browser.Written("TxtL").back(),
              (zoom < 10 ? "0" : "") + std::to_string(zoom) + "+040.500000-075.250000");
  }
  browser.pageLost("gone");
  view.browser = {518, 358};
  client->FitByUser(0);
  loop.Advance(0);
  Command("S1");
  EXPECT_EQ(browser.Written("TxtL").back().substr(0, 9), "13+040.62") << "a fit meanwhile is newer";
}

TEST_F(ClientTest, TheFirstZoomReportWithoutDataRebuildsNothing) {
  StartStreaming();
  ReportMapReady();
  EXPECT_EQ(client->Tiles().TileGeneration(), 0);
  Command("Z11");
  EXPECT_EQ(client->Tiles().TileGeneration(), 1);
  EXPECT_EQ(browser.Written("TxtR").back(), "0001");
}

TEST_F(ClientTest, AReloadForgetsTheDataAndAsksAgain) {
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.60, -75.40)}));
  const int generation = client->Tiles().TileGeneration();
  EXPECT_TRUE(client->KeyDown(0, 'R'));
  EXPECT_EQ(client->Points().PointCount(), 0u);
  EXPECT_THAT(client->Tiles().Fastest().Entries(), SizeIs(2)) << "no point that is gone";
  loop.Advance(0);
  EXPECT_EQ(client->Tiles().TileGeneration(), generation + 1);
  EXPECT_THAT(TileFiles(), IsEmpty());
  EXPECT_THAT(locator.sent, SizeIs(2));
  EXPECT_TRUE(view.mapUpdating);
  loop.Advance(1000);
  EXPECT_FALSE(view.mapUpdating) << "the notice goes with the redraw, data or not";
  EXPECT_EQ(beeper.beeps, 2) << "one of the reload, one of the key";
}

TEST_F(ClientTest, DigitsChooseUnitsAndAreSilentWithoutOne) {
  StartStreaming();
  const auto enabled = [this] { return client->Units().Book().requestText; };
  EXPECT_TRUE(client->KeyDown(0, '2'));
  EXPECT_EQ(enabled(), "D0123456789AC");
  EXPECT_TRUE(client->KeyDown(1, '1'));
  EXPECT_EQ(enabled(), "D0123456789AB0123456789AC");
  const int beeps = beeper.beeps;
  EXPECT_FALSE(client->KeyDown(0, '3') || client->KeyDown(4, 'A'));
  EXPECT_EQ(beeper.beeps, beeps);
  client->KeyDown(0, '1');
  client->KeyDown(0, 'A');
  EXPECT_EQ(enabled(), "D0123456789AB0123456789AC");
}

TEST_F(ClientTest, KeysMoveAndScaleTheWindow) {
  StartStreaming();
  const TimeWindow day{ToMillis({2026, 11, 22, 3}), ToMillis({2026, 11, 23, 3})};
  const std::tuple<int, char, TimeWindow> steps[] = {
      {0, '[', {day.start - kDay, day.end - kDay}},           {0, ']', day},
      {2, '3', {day.start - 3 * kDay, day.end - 3 * kDay}},   {3, '3', day},
      {2, '9', {day.start - 9 * kDay, day.end - 9 * kDay}},   {0, 'X', day},
      {0, 'I', {day.start + 8 * kHour, day.end - 8 * kHour}}, {0, 'O', day},
      {0, 'O', {day.start - kDay, day.end + kDay}},           {0, 'X', day},
  };
  for (const auto& [modifiers, key, window] : steps) {
    const std::size_t asked = locator.sent.size();
    const int beeps = beeper.beeps;
    ASSERT_TRUE(client->KeyDown(modifiers, key)) << key;
    ASSERT_EQ(client->Window(), window) << key;
    ASSERT_THAT(locator.sent, SizeIs(asked + 1));
    ASSERT_EQ(beeper.beeps, beeps + 2) << "the reload's and the key's";
  }
}

TEST_F(ClientTest, KeysReachThePage) {
  StartStreaming();
  const struct {
    int modifiers;
    char key;
    const char* field;
    const char* value;
    bool beeps;
  } keys[] = {{0, 'M', "TxtMT", "Map", true},    {0, 'S', "TxtMT", "Satellite", true},
              {0, 'H', "TxtMT", "Hybrid", true}, {0, 'T', "TxtMT", "Terrain", true},
              {0, 'C', "TxtSV", "True", true},   {0, 'C', "TxtSV", "False", true},
              {0, 'V', "txtPn", "True", true},   {2, 'M', "TxtM", "F", true},
              {2, 'T', "TxtT", "F", true},       {2, 'Z', "TxtZ", "F", true},
              {0, 'N', "TxtG", "True", true}};
  for (const auto& c : keys) {
    const int beeps = beeper.beeps;
    ASSERT_TRUE(client->KeyDown(c.modifiers, c.key)) << c.key;
    ASSERT_FALSE(browser.Written(c.field).empty()) << c.key;
    EXPECT_EQ(browser.Written(c.field).back(), c.value) << c.key;
    EXPECT_EQ(beeper.beeps > beeps, c.beeps) << c.key;
  }
  EXPECT_FALSE(view.captionVisible || view.pickers[0].visible) << "Ctrl+T hides them with the tracks";
  const MenuItem& entry = Entry(Command::kTrackingData);
  client->MenuChosen(entry);
  EXPECT_EQ(browser.Written("TxtT").back(), "T");
  EXPECT_FALSE(view.captionVisible) << "the menu entry leaves them as they are";
  client->MenuChosen(entry);
  client->KeyDown(2, 'T');
  EXPECT_TRUE(view.captionVisible && view.pickers[0].visible);
  client->Pickers().Changed(1, ToMillis({2026, 11, 25}));
  client->MenuChosen(entry);
  EXPECT_EQ(browser.Written("TxtT").back(), "F");
  client->Pickers().LostFocus(0);
  EXPECT_TRUE(view.pickers[0].visible && view.reload);
}

TEST_F(ClientTest, WhileAPickerIsEditedKeysBelongToIt) {
  StartStreaming();
  client->Pickers().GotFocus(0);
  EXPECT_FALSE(client->KeyDown(0, 'R'));
  client->Pickers().LostFocus(0);
  EXPECT_TRUE(client->KeyDown(0, 'R'));
}

// Tiles of many points take several turns of the event loop, in which page, user and data go on.
class DrawingTest : public ClientTest {
 protected:
  /// Two points on the screen, and another drawing of them begun by a user's fit.
  void BeginToDraw() {
    StartStreaming();
    ReportMapReady();
    Arrive(PacketOf({Record(0, 40.60, -75.40), Record(1, 40.62, -75.42)}));
    client->FitByUser(0);
    loop.Advance(1000);
    EXPECT_FALSE(view.mapUpdating);
    browser.writes.clear();
    client->FitByUser(0);
    loop.Tick("tmrTiles");
  }
};

TEST_F(DrawingTest, TheNoticeStaysUntilTilesAndTimelineAreDrawn) {
  BeginToDraw();
  loop.Tick("tmrRedraw");
  EXPECT_TRUE(view.mapUpdating) << "the tiles outlast the timeline";
  loop.Advance(0);
  EXPECT_FALSE(view.mapUpdating);
}

TEST_F(DrawingTest, WhatArrivesMeanwhileIsDecodedAfterwards) {
  BeginToDraw();
  const Bytes packet = PacketOf({Record(60, 41, -75), Record(61, 41, -75)});
  data.arrived(ByteView(packet).first(20));
  loop.Tick("DataPause");
  loop.Advance(0);
  EXPECT_THAT(browser.Written("TxtF"), SizeIs(1)) << "half a packet does not take it away";
  Arrive(Bytes(packet.begin() + 20, packet.end()));
  EXPECT_EQ(client->Points().PointCount(), 4u);
}

TEST_F(ClientTest, RightClicksOpenTheMenu) {
  client->Load();
  Command("C");
  EXPECT_THAT(view.popups, ElementsAre(MenuView::MenuPlace::kAtPointer));
  const MenuItem& beenHere = Entry(Command::kBeenHere);
  const MenuItem& dataPoints = Entry(Command::kNearby);
  EXPECT_FALSE(beenHere.enabled || dataPoints.enabled);
  Command("F00000000000000000000");
  EXPECT_TRUE(beenHere.enabled && dataPoints.enabled);
  EXPECT_EQ(client->Page().RightClickX, 536870912);
}

TEST_F(ClientTest, APageIsToldWhatWasChosenBeforeItCame) {
  StartStreaming();
  const std::pair<const char*, const char*> told[] = {
      {"TxtM", "F"},     {"TxtT", "F"},     {"TxtZ", "F"}, {"TxtMT", "Satellite"},
      {"txtPn", "True"}, {"TxtSV", "True"}, {"TxtZL", "*"}};
  for (const auto& [modifiers, key] : {std::pair{2, 'M'}, {2, 'T'}, {2, 'Z'}, {0, 'S'}, {0, 'V'}, {0, 'C'}})
    client->KeyDown(modifiers, key);
  browser.pageLost("gone");
  browser.writes.clear();
  Command("S99");
  loop.Advance(500);
  EXPECT_THAT(browser.writes, testing::UnorderedElementsAreArray(told));
}

TEST_F(ClientTest, ALostPageIsToldOfAndTriedAgain) {
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.60, -75.40)}));
  browser.navigations.clear();
  EXPECT_TRUE(view.splash);
  browser.pageLost("gone");
  EXPECT_FALSE(view.splash) << "it would hide what is said about it";
  browser.pageLost("no placeholder either");
  const std::string placeholder =
      "file://" + (folders.Path() / "app/no_map.html").string() + "?site=127.0.0.1%3A2480&reason=gone";
  EXPECT_THAT(browser.navigations, ElementsAre(placeholder));
  loop.Advance(5000);
  EXPECT_THAT(browser.navigations, ElementsAre(placeholder, HasSubstr("/fullscreen/index.php")));
  const std::size_t firstFits = browser.Written("TxtL").size();
  Command("S1");
  EXPECT_THAT(browser.Written("TxtL"), SizeIs(firstFits + 1)) << "the new page gets its first fit";
}

TEST_F(ClientTest, AutoCentreFollowsTheNewestPoint) {
  settings.values["OnUpdate"] = "Auto &Center on Most Recent Point";
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.60, -75.40)}));
  client->FitByUser(0);
  loop.Advance(0);
  browser.writes.clear();
  Arrive(PacketOf({Record(60, 41, -75)}));
  EXPECT_THAT(browser.Written("TxtP"), ElementsAre(StartsWith("+041.0")));
  EXPECT_THAT(browser.Written("TxtF"), IsEmpty());
}

TEST_F(ClientTest, MarksAndTextsGoWhenTheMapMovesOrDataCome) {
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.62, -75.37), Record(60, 40.63, -75.37)}));
  for (const bool isPan : {true, false}) {
    client->Marks().PointerOverCaption(300);
    EXPECT_THAT(view.pointInfos, SizeIs(1));
    EXPECT_TRUE(view.marker);
    if (isPan) {
      Command("M40.620000,-75.371000");
    } else {
      client->MapReload();
    }
    EXPECT_THAT(view.pointInfos, IsEmpty()) << isPan;
    EXPECT_FALSE(view.marker) << isPan;
  }
}

TEST_F(ClientTest, APointOfTheTimelineIsMarkedOnTheMapUntilThePointsMove) {
  StartStreaming();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.62, -75.37, 100), Record(3600, 40.63, -75.37)}));
  loop.Advance(1000);
  EXPECT_EQ(view.picture->rows[0].pointCount, 2u);
  client->Timeline().Hovered(1, 166);
  EXPECT_TRUE(view.timelineInfo && view.marker);
  Command("m00500000340024000000-045000000012");
  EXPECT_FALSE(view.timelineInfo) << "the pointer is over the map";
  EXPECT_THAT(view.pointInfos, SizeIs(1));
  client->MapReload();
  client->Timeline().Hovered(1, 166);
  EXPECT_EQ(view.timelineInfo, "Unit #1 First") << "the picture is older than the data";
}

TEST_F(ClientTest, ABoxDrawnOnTheMapIsFittedWithoutRedrawing) {
  StartStreaming();
  ReportMapReady(12);
  const int generation = client->Tiles().TileGeneration();
  client->Marks().RubberBandDrawn({636, 262}, {382, 438});
  EXPECT_THAT(browser.Written("TxtF"), ElementsAre(StartsWith("13")));
  EXPECT_NEAR(client->View().CentreLat, 40.62, 1e-4);
  EXPECT_EQ(client->Tiles().TileGeneration(), generation);
}

TEST_F(ClientTest, AnEntryFitsTheMapToItsDisplayedUnit) {
  UseUnits("-00000000000AOff~X00000000000BWest~X00000000000CEast~");
  client->Load();
  Connect();
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.60, -75.40), Record(60, 40.62, -75.38)}, "00000000000B"));
  Arrive(PacketOf({Record(0, 41.60, -70.40), Record(60, 41.62, -70.38)}, "00000000000C"));
  const MenuModel& menus = client->Menus();
  ASSERT_EQ(menus.Count(Command::kFitUnit), 3);
  for (const auto& [k, caption, lat] :
       {std::tuple{2, "00000000000C - East", 41.61}, {1, "00000000000B - West", 40.61}}) {
    EXPECT_EQ(menus.Find(Command::kFitUnit, k)->caption, caption);
    client->MenuChosen(*menus.Find(Command::kFitUnit, k));
    loop.Advance(0);
    EXPECT_NEAR(client->View().CentreLat, lat, 1e-3) << caption;
  }
}

TEST_F(ClientTest, EveryCommandThatCanBeGivenHasItsHandler) {
  for (const CommandRow& row : CommandTable()) {
    const MenuItem* entry = client->Menus().Find(row.command, row.index);
    const bool isMenuOrLine = entry && (entry->IsMenu() || entry->IsSeparator());
    const bool canBeGiven = (row.state == CommandRow::State::kReady || *row.keys[0].keys) &&
                            IsBuilt(row.command) && !isMenuOrLine;
    EXPECT_TRUE(!canBeGiven || client->Handlers().Has(row.command)) << row.name << " " << row.keys[0].keys;
  }
}

TEST_F(ClientTest, MenuChoicesAreShownAndStored) {
  StartStreaming();
  Choose("mnuoptionsOnStartupLoadArray", 1);
  EXPECT_EQ(Entry("mnuoptionsOnStartupLoad").caption, "On Startup: Load Data Since Midnight");
  EXPECT_EQ(settings.saved["LoadOnStartup"], "Load Data Since Midnight");
  Choose("mnuOptionsOnUpdateArray", 2);
  EXPECT_EQ(client->Menus().CheckedIndex(Command::kUpdateChoice), 2);
  EXPECT_EQ(settings.saved["OnUpdate"], "Auto &Center on Most Recent Point");
  Choose("mnuOptionsUOM_Array", 1);
  EXPECT_EQ(Entry("mnuOptionsUOM").caption, "Unit of Measure: Kilometers");
  EXPECT_EQ(settings.saved["Unit Of Measure"], "1");
  Choose("mnuViewTimeline");
  EXPECT_FALSE(view.timelineVisible);
  Choose("mnuPopupPanorama");
  EXPECT_EQ(browser.Written("txtPn").back(), "True");
  EXPECT_EQ(view.menuLabel, "Exit to Map");
  client->MenuButtonClicked();
  EXPECT_EQ(browser.Written("txtPn").back(), "False");
  EXPECT_EQ(view.menuLabel, "Menu");
  client->MenuButtonClicked();
  EXPECT_THAT(view.popups, ElementsAre(MenuView::MenuPlace::kUnderButton));
}

TEST_F(ClientTest, ThePortBaseIsAskedUntilItIsOne) {
  StartStreaming();
  Choose("mnuOptionsPortBase");
  for (const char* answer : {"abc", "70000", "-1"}) {
    box.AnswerIt({true, answer});
    ASSERT_TRUE(box.IsOpen()) << answer;
  }
  for (const auto& [typed, stored] :
       {std::pair("18801.7", "18802"), {"18802.5", "18802"}, {"28801", "28801"}}) {
    box.AnswerIt({true, typed});
    EXPECT_EQ(settings.saved["PortBase"], stored);
    EXPECT_EQ(Entry("mnuOptionsPortBase").caption, std::string("Local Port Range Base = ") + typed);
    Choose("mnuOptionsPortBase");
  }
  box.AnswerIt({false, ""});
  client->MapReload();
  AnswerLocator();
  EXPECT_EQ(probe.connections.back(), "127.0.0.9:28799");
}

TEST_F(ClientTest, AWindowThatWasEditedIsAskedForWhenTheButtonIsPressed) {
  StartStreaming();
  client->Pickers().Changed(1, ToMillis({2026, 11, 24, 3}));
  EXPECT_THAT(locator.sent, SizeIs(1));
  client->Pickers().ReloadClicked();
  EXPECT_THAT(locator.sent, SizeIs(2));
  Connect();
  EXPECT_TRUE(probe.closed) << "it has done its work";
  EXPECT_THAT(data.sent, ElementsAre("0123456789AB~2026-11-22 08:00:00~2026-11-23 08:00:00~~",
                                     "0123456789AB~2026-11-22 08:00:00~2026-11-24 08:00:00~~"));
  client->Pickers().Changed(1, ToMillis({9999, 12, 31, 19, 0, 0}));
  client->Pickers().ReloadClicked();
  Connect();
  EXPECT_THAT(data.sent.back(), testing::EndsWith("~9999-12-31 23:59:59~~")) << "the last there is";
}

TEST_F(ClientTest, ResizesTellThePageAndStoreThePlacementLater) {
  settings.values["WindowState"] = "0";
  StartStreaming();
  browser.writes.clear();
  settings.saved.clear();
  window.bounds = {10, 20, 990, 700};
  view.browser = {1008, 600};
  client->Frame().Resized();
  EXPECT_THAT(browser.Written("TxtP"), IsEmpty()) << "no centre is known";
  Command("M40.620000,-75.370000");
  client->Frame().Resized();
  EXPECT_THAT(browser.Written("TxtP"), ElementsAre("+040.620000-075.370000"));
  EXPECT_EQ(browser.Written("TxtX").back(), "987");
  EXPECT_EQ(browser.Written("TxtY").back(), "595");
  EXPECT_THAT(settings.saved, IsEmpty());
  loop.Advance(250);
  EXPECT_EQ(settings.saved["WindowPos_W"], "990");
}

TEST_F(ClientTest, TheLampTellsWhatIsUnseen) {
  settings.values["OnUpdate"] = "Do &Nothing";
  StartStreaming();
  const auto lamp = [this] {
    loop.Advance(1000);
    return view.lamp.tip;
  };
  ReportMapReady();
  Arrive(PacketOf({Record(0, 40.62, -75.37)}));
  EXPECT_EQ(lamp(), "Connected");
  Arrive(PacketOf({Record(60, 40.62, -75.37)}));
  EXPECT_EQ(lamp(), "New data waits: press F");
  client->FitByUser(0);
  EXPECT_EQ(lamp(), "Connected");
  client->MapReload();
  Connect();
  Arrive(PacketOf({Record(0, 40.62, -75.37)}));
  EXPECT_EQ(lamp(), "Not drawn yet: press F");
}

}  // namespace
}  // namespace pallomir
