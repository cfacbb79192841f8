#include <cerrno>

#include "shell/client_testing.h"

namespace pallomir {
namespace {

// The rooms that the Options menu opens: hotspot lists, the Data Server, demo mode.
TEST_F(ClientTest, HotspotsAreShownEditedAndStored) {
  client->Load();
  EXPECT_EQ(Entry(Command::kHotspot, 4).caption, "netgear");
  client->RoomsOfWindow().hotspots.Apply({"Caf\u00E9 \u2615"});
  EXPECT_EQ(Entry(Command::kHotspot, 1).caption, "Caf\u00E9 \u2615");
  client->RoomsOfWindow().hotspots.ApplySecure({{"home", "WPA2", "abc"}});
  EXPECT_EQ(Entry("mnuOptionsSecureHotSpotsArray", 1).caption, "home");
  Choose("mnuOptionsHotSpotsChange");
  EXPECT_EQ(settings.saved["SSID_List_Mode"], "Prohibited");
  EXPECT_EQ(Entry("mnuOptionsHotSpots").caption, "Mobile Unit Prohibited Hotspots List");
  EXPECT_EQ(Entry("mnuOptionsHotSpotsChange").caption, "Change from \"Prohibited\" to \"Permitted\" List");
}

TEST_F(ClientTest, TheDataServersEntriesWaitForEachOther) {
  client->Load();
  const auto areEnabled = [this] {
    std::vector<bool> enabled;
    for (const char* name :
         {"mnuOptionsDataServerInstall", "mnuOptionsDataServerStart", "mnuOptionsDataServerStop",
          "mnuOptionsDataServerUninstall", "mnuOptionsDemoMode"})
      enabled.push_back(Entry(name).enabled);
    return enabled;
  };
  Choose("mnuOptionsDataServerStop");
  EXPECT_EQ(areEnabled(), std::vector<bool>(5, false));
  programs.End();
  loop.Advance(100);
  EXPECT_EQ(areEnabled(), std::vector<bool>(5, true));

  programs.error = ENOENT;
  Choose("mnuOptionsDataServerStart");
  EXPECT_EQ(view.lamp.tip,
            "Looking for the server\nThe service host of the Data Server can't be started: No such file "
            "or directory");
}

TEST_F(ClientTest, DemoModeIsLeftThroughANewInstance) {
  client->Load();
  Choose("mnuOptionsDemoMode");
  EXPECT_EQ(box.shown.back().text,
            "Do you want to exit Demo Mode?\r\nIf you do, then Pallomir Display will\r\n   exit and restart "
            "in the new "
            "mode.");
  bool wasFree = false;
  programs.beforeStart = [&] {
    wasFree = !mutex.owned && mutex.closed && !signal.listening;
    EXPECT_EQ(settings.onDisk["Demo Mode"], "False") << "the new instance reads it there";
  };
  box.AnswerIt({true, ""});
  ASSERT_THAT(programs.started, SizeIs(1));
  EXPECT_EQ(programs.started[0].program, folders.Path() / "app" / "pallomir");
  EXPECT_EQ(programs.started[0].workingFolder, folders.Path() / "app");
  EXPECT_TRUE(wasFree) << "the new instance would take itself for the second one";
  EXPECT_EQ(window.closeWanted, 1);
  client->Unload();
  EXPECT_THAT(box.shown, SizeIs(1)) << "the mutex is not released twice";
  EXPECT_EQ(view.exitCode, 0);
}

TEST_F(ClientTest, DemoModeThatCanNotBeSwitchedLeavesTheUnitsAlone) {
  const std::tuple<const char*, const char*, std::optional<std::string>, const char*> cases[] = {
      {"True", "False", {}, "Error: The specified file was not found."},
      {"False", "True", {}, "Error: The specified file was not found."},
      {"False", "True", "The disk is full.", "The disk is full."}};
  for (const auto& [mode, stored, failure, message] : cases) {
    SCOPED_TRACE(mode);
    ClientHarness harness;
    harness.UseUnits("X0123456789ABFirst~-0123456789ACSecond~");
    harness.settings.values["Demo Mode"] = mode;
    harness.client->Load();
    harness.programs.error = ENOENT;
    harness.settings.failure = failure;
    harness.Choose("mnuOptionsDemoMode");
    harness.box.AnswerIt({true, ""});
    EXPECT_EQ(harness.box.shown.back().text, message);
    EXPECT_EQ(harness.programs.started.empty(), failure.has_value());
    EXPECT_EQ(harness.settings.saved["Demo Mode"], stored);
    EXPECT_EQ(harness.window.closeWanted, 0);
    EXPECT_TRUE(harness.mutex.owned);
    harness.Choose(Command::kOnlyUnit, 2);
    const bool isDemo = std::string(mode) == "True";
    EXPECT_EQ(harness.settings.values["Mobile Units"],
              isDemo ? "X0123456789ABFirst~-0123456789ACSecond~" : "-0123456789ABFirst~X0123456789ACSecond~");
  }
}

TEST_F(ClientTest, CancelLeavesTheModeAndTheFaqOpensInTheBrowser) {
  client->Load();
  Choose("mnuOptionsDemoMode");
  box.AnswerIt({false, ""});
  EXPECT_THAT(programs.started, IsEmpty());
  Choose("mnuHelpFAQs");
  EXPECT_THAT(programs.pages, ElementsAre("http://127.0.0.1:2480/faq"));
  EXPECT_FALSE(Entry("mnuHelpHelp").enabled);
}

}  // namespace
}  // namespace pallomir
