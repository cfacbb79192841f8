#include "shell/client_testing.h"

namespace pallomir {
namespace {

TEST_F(ClientTest, FirstStartUsesDefaultsAndAsksTheLocatorForTheEnabledDemoUnits) {
  client->Load();
  EXPECT_EQ(registry.values["Main Window Handle"], "4711");
  EXPECT_EQ(window.bounds, (PixelRect{0, 20, 1600, 1000}));
  EXPECT_EQ(window.state, WindowMode::kMaximised);
  EXPECT_TRUE(window.shown && client->IsDemoMode() && view.demoMode);
  EXPECT_EQ(Entry("mnuOptionsOnUpdate").caption, "On Update: Auto &Fit");
  // 20:30 UTC is 15:30 in a zone five hours west.
  EXPECT_EQ(client->Window(), (TimeWindow{ToMillis({2026, 11, 22, 3}), ToMillis({2026, 11, 23, 3})}));
  EXPECT_THAT(locator.connections, ElementsAre("127.0.0.1:2435"));
  EXPECT_EQ(locator.sent[0].substr(6), "D000000000001000000000002000000000003000000000004");
  EXPECT_EQ(browser.navigations[2], "127.0.0.1:2480/fullscreen/index.php?X=997&Y=695");
}

TEST_F(ClientTest, SettingsAreReadInTheirOrder) {
  client->Load();
  EXPECT_THAT(
      settings.order,
      ElementsAre("WindowPos_L", "WindowPos_T", "WindowPos_W", "WindowPos_H", "WindowState", "LoadOnStartup",
                  "OnUpdate", "SSID_List_Mode", "Mobile Provider Index", "Mobile Provider Name",
                  "Mobile Provider URL", "Custom Mobile Provider Name", "Custom Mobile Provider URL",
                  "ReportNOW", "Mobile Phone Number", "Email Address", "Alert Method", "Alert Stale Index",
                  "Unit Of Measure", "PortBase", "AlertSound", "AlertEnabled", "Demo Mode", "SSIDs",
                  "SecureSSIDs", "Journal Window", "Journal Notifications", "Zone Flicker Seconds",
                  "Zone Flicker Meters", "Zone Alerts Only", "Mute Until", "Live"))
      << "the user's units are no part of the demo";
}

TEST_F(ClientTest, NonsenseInTheSettingsFallsBackToDefaults) {
  settings.values = {{"WindowPos_L", "-40"},     {"WindowPos_T", "12.9"},   {"WindowPos_W", "wide"},
                     {"LoadOnStartup", "Later"}, {"OnUpdate", ""},          {"PortBase", "65536"},
                     {"AlertSound", "8"},        {"Unit Of Measure", "-1"}, {"Demo Mode", "maybe"},
                     {"Alert Method", "Pigeon"}, {"WindowState", "0"}};
  client->Load();
  EXPECT_EQ(window.bounds, (PixelRect{0, 12, 1600, 1000}));
  EXPECT_EQ(Entry("mnuOptionsPortBase").caption, "Local Port Range Base = 18801");
  EXPECT_EQ(Entry("mnuOptionsUOM").caption, "Unit of Measure: Miles");
  EXPECT_EQ(Trouble(), "Internal error 664201: illegal value for \"AlertMethod\"");
}

TEST_F(ClientTest, WithoutAZoneTheOffsetIsAskedAndTheRestFollowsTheAnswer) {
  clock.zone.reset();
  client->Load();
  EXPECT_FALSE(window.shown);
  ASSERT_TRUE(box.IsOpen());
  EXPECT_EQ(box.shown[0].kind, Question::Kind::kInput);
  EXPECT_EQ(box.shown[0].defaultText, "5.0");
  box.AnswerIt({true, "-5.5"});
  EXPECT_TRUE(window.shown);
  EXPECT_EQ(client->NowLocal(), clock.now + 330 * kMinute);
}

TEST_F(ClientTest, WithoutAnEnabledUnitItSaysSoAndNothingIsAskedOfTheNet) {
  UseUnits("-0123456789ABOnly~");
  client->Load();
  EXPECT_EQ(Trouble(), "Note: the mobile unit is not enabled");
  EXPECT_FALSE(window.shown) << "the window follows the answer";
  box.AnswerIt();
  EXPECT_TRUE(window.shown);
  EXPECT_FALSE(view.demoMode);
  EXPECT_TRUE(view.editedUnits);
  EXPECT_THAT(locator.connections, IsEmpty());
  EXPECT_FALSE(view.mapUpdating) << "no redraw follows that would take the notice away";
}

TEST_F(ClientTest, TileFoldersAreEmptyAfterEveryStart) {
  std::filesystem::create_directories(TileFolder());
  fakes::WriteFile(TileFolder() / "000C00000000000000.png", "old");
  fakes::WriteFile(TileFolder() / "foreign.txt", "x");
  client->Load();
  EXPECT_THAT(TileFiles(), IsEmpty());
}

TEST_F(ClientTest, StatusesTickTheirLinesAndTheLastOneHidesTheSplash) {
  client->Load();
  EXPECT_TRUE(view.splash);
  for (const char* status : {"S0", "S2", "S17", "S18", "S5"}) Command(status);
  EXPECT_THAT(view.ticked, ElementsAre(2, 5, 17));
  Command("S99");
  EXPECT_TRUE(view.splash);
  loop.Advance(500);
  EXPECT_FALSE(view.splash);
  EXPECT_THAT(browser.writes, ElementsAre(std::pair("TxtZL", "*")))
      << "a page begins with what is chosen at first";
}

TEST_F(ClientTest, TheRetryDialogEndsTheSession) {
  StartStreaming();
  data.failed({10054, "The connection was reset.", 104});
  ASSERT_TRUE(view.retry);
  client->Feed().EndSession();
  EXPECT_EQ(window.closeWanted, 1);
}

TEST_F(ClientTest, ASecondStartBringsTheMessageOfTheStartForward) {
  UseUnits("");
  client->Load();
  ASSERT_TRUE(box.IsOpen());
  signal.raiseWanted();
  EXPECT_EQ(box.broughtForward, 1);
  EXPECT_EQ(window.activated, 0) << "there is no window yet";
  box.AnswerIt();
  signal.raiseWanted();
  EXPECT_EQ(box.broughtForward, 1);
  EXPECT_EQ(window.activated, 1);
}

TEST_F(ClientTest, ClosingStoresTheStateAndLetsEverythingGo) {
  settings.values["WindowState"] = "0";
  StartStreaming();
  window.bounds = {1, 2, 800, 600};
  client->Frame().Resized();
  client->Unload();
  EXPECT_EQ(settings.onDisk["WindowState"], "0");
  EXPECT_EQ(settings.onDisk["WindowPos_L"], "1");
  EXPECT_TRUE(locator.closed && probe.closed && data.closed && browser.stopped);
  EXPECT_EQ(view.exitCode, 0);
  const auto writes = browser.writes.size();
  loop.Advance(60'000);
  client->Frame().Resized();
  client->MapReload();
  Command("Z5");
  EXPECT_EQ(browser.writes.size(), writes);
}

TEST_F(ClientTest, SettingsThatCannotBeStoredAreToldBeforeTheEnd) {
  StartStreaming();
  settings.failure = "The disk is full.";
  client->Unload();
  EXPECT_THAT(Trouble(), HasSubstr("The disk is full."));
  EXPECT_TRUE(mutex.owned) << "no other instance reads the old ones meanwhile";
  EXPECT_FALSE(view.exitCode);
  box.AnswerIt({true, ""});
  ASSERT_TRUE(box.IsOpen()) << "tried again, and failed again";
  box.AnswerIt({false, ""});
  EXPECT_EQ(view.exitCode, 0);
  EXPECT_FALSE(mutex.owned);
}

TEST_F(ClientTest, AMutexThatCannotBeReleasedIsToldBeforeTheEnd) {
  StartStreaming();
  mutex.owned = false;
  client->Unload();
  EXPECT_EQ(Trouble(), "Mutex Release Error: 1\nhMutex = 77");
  EXPECT_FALSE(view.exitCode);
  box.AnswerIt();
  EXPECT_EQ(view.exitCode, 0);
}

TEST_F(ClientTest, ATileFolderThatCannotBeEmptiedEndsTheProgram) {
  StartStreaming();
  ReportMapReady();
  std::filesystem::remove_all(TileFolder());
  fakes::WriteFile(TileFolder(), "a file where the folder should be");
  const int generation = client->Tiles().TileGeneration();
  client->MapReload();
  loop.Advance(0);
  EXPECT_THAT(Trouble(), HasSubstr("Error 75:\n"));
  EXPECT_EQ(client->Tiles().TileGeneration(), generation);
  box.AnswerIt();
  EXPECT_EQ(window.closeWanted, 1);
}

}  // namespace
}  // namespace pallomir
