#include "commands/command_table.h"
#include "shell/client_testing.h"

// Live mode in the whole client: what comes is shown without a key, and nothing else changes.

namespace pallomir {
namespace {

using testing::EndsWith;

constexpr int kNow = 8 * 3600 + 1800;  // the clock, in the seconds of Record

class LiveJointsTest : public ClientTest {
 protected:
  void Start(const std::map<std::string, std::string>& stored = {{"Live", "True"}}) {
    for (const auto& [key, value] : stored) settings.values[key] = value;
    StartStreaming();
    ReportMapReady();
    ArrivePoint(0);
    loop.Advance(1000);
    browser.writes.clear();
  }
  void ArrivePoint(int seconds, double lat = 40.6) { Arrive(PacketOf({Record(seconds, lat, -75.3)})); }
  void Press(char key) { client->KeyDown(kNoModifier, key); }
  std::size_t Writes(const std::string& field) const {
    return static_cast<std::size_t>(
        std::ranges::count(browser.writes, field, &std::pair<std::string, std::string>::first));
  }
  std::size_t Points() const { return client->Points().PointCount(); }
  Millis End() const { return client->Window().end; }
};

TEST_F(LiveJointsTest, TheKeySwitchesItAndItIsStored) {
  Start({});
  EXPECT_EQ(liveView.word, "");
  ArrivePoint(1);
  EXPECT_EQ(Points(), 1u) << "held, as ever";
  Press('L');
  loop.Advance(100);
  EXPECT_EQ(Points(), 2u);
  EXPECT_EQ(liveView.word, "Live");
  EXPECT_THAT(view.lamp.tip, EndsWith("\nLive: new points are shown as they come"));
  EXPECT_EQ(settings.values["Live"], "True");
  EXPECT_TRUE(client->Menus().At("mnuOptionsLive").checked);
  liveView.chosen();
  EXPECT_EQ(liveView.word, "");
  EXPECT_EQ(settings.values["Live"], "False");
  ArrivePoint(2);
  EXPECT_EQ(Points(), 2u);
}

TEST_F(LiveJointsTest, OnlyTheFirstBatchRaisesTheWindow) {
  Start();
  const int raised = window.raised;
  for (int second = 1; second <= 5; ++second) ArrivePoint(second);
  EXPECT_EQ(window.raised, raised);
  EXPECT_THAT(sound.plays, SizeIs(1));
  clock.now += 10 * kMinute;
  ArrivePoint(6);
  EXPECT_THAT(sound.plays, SizeIs(2)) << "after a silence it is news";
  EXPECT_EQ(window.raised, raised);
}

TEST_F(LiveJointsTest, OnUpdateActsOnceASecondAtMost) {
  const struct {
    const char* onUpdate;
    bool grows;  // the box of all points
    std::size_t fits, pans;
  } rows[] = {{"Do &Nothing", true, 0, 0},
              {"Auto &Fit", true, 3, 0},
              {"Auto &Fit", false, 0, 0},
              {"Auto &Center on Most Recent Point", true, 0, 3}};
  for (const auto& row : rows) {
    LiveJointsTest_OnUpdateActsOnceASecondAtMost_Test test;
    test.Start({{"Live", "True"}, {"OnUpdate", row.onUpdate}});
    for (int tenth = 1; tenth <= 25; ++tenth) test.ArrivePoint(tenth, row.grows ? 40.6 + tenth * 0.01 : 40.6);
    EXPECT_EQ(test.Points(), 26u);
    EXPECT_EQ(test.Writes("TxtR"), 3u) << row.onUpdate;
    EXPECT_EQ(test.Writes("TxtF"), row.fits) << row.onUpdate;
    EXPECT_EQ(test.Writes("TxtP"), row.pans) << row.onUpdate;
  }
}

TEST_F(LiveJointsTest, TheWindowGoesOnWithTheNewestPoint) {
  Start({{"Live", "True"}, {"LoadOnStartup", "Load Last 24 Hrs Data"}});
  EXPECT_THAT(data.sent.back(), EndsWith("~2026-11-21 20:30:00~2026-11-23 20:30:00~~"));
  const Millis end = End();
  ArrivePoint(kNow);
  EXPECT_EQ(End(), end);
  ArrivePoint(kNow + 200);
  EXPECT_EQ(End(), end / kHour * kHour + kHour);
  EXPECT_EQ(view.pickers[1].value, End());
  ArrivePoint(kNow + 9000);
  EXPECT_EQ(Points(), 4u);
  EXPECT_EQ(End(), end / kHour * kHour + kHour) << "a clock that is ahead takes the window nowhere";
  EXPECT_THAT(locator.sent, SizeIs(1)) << "nothing is loaded for that";
}

TEST_F(LiveJointsTest, AWindowOfThePastPausesItUntilTheUserReturns) {
  Start({{"Live", "True"}, {"LoadOnStartup", "Load Nothing"}});
  Press('[');
  EXPECT_EQ(liveView.word, "Live") << "the 24 hours until now";
  Press('[');
  EXPECT_EQ(liveView.word, "Live: paused, press X");
  client->Feed().ShowLamp();
  EXPECT_THAT(view.lamp.tip, EndsWith("\nLive: paused, press X"));
  Connect();
  EXPECT_THAT(data.sent.back(), EndsWith("~2026-11-21 20:30:00~~"));
  const Millis end = End();
  ArrivePoint(kNow + 200);
  EXPECT_EQ(End(), end);
  Press('R');
  EXPECT_EQ(liveView.word, "Live: paused, press X");
  liveView.chosen();
  EXPECT_EQ(liveView.word, "Live") << "also where the start-up loads nothing";
  EXPECT_EQ(client->Window().start, ToMillis({2026, 11, 22}));
}

}  // namespace
}  // namespace pallomir
