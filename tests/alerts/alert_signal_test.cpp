#include "alerts/alert_signal.h"

#include <gmock/gmock.h>

#include "fakes/fake_alerts.h"
#include "fakes/room_ports.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class AlertSignalTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  void Use(int mode, int sound = 4) {
    choices_.alerts.enabled.Store(mode);
    choices_.alerts.sound.Store(sound);
  }
  void StartPersistent(int lasts) {
    Use(2);
    player_.lasts = lasts;
    signal_.Start();
  }

  fakes::FakeSoundPlayer player_{loop_};
  fakes::FakeAlertView view_;
  AlertSignal signal_{view_, player_, loop_, trace_, choices_.alerts, "/app/Alerts"};
};

TEST_F(AlertSignalTest, DisabledAndOncePlayOnceEachTime) {
  for (const int mode : {0, 1}) {
    SCOPED_TRACE(mode);
    player_.plays.clear();
    Use(mode, 7);
    signal_.Start();
    EXPECT_EQ(player_.open, "/app/Alerts/SoftTick.wav");
    signal_.Start();
    loop_.Advance(5000);
    ASSERT_THAT(player_.plays, SizeIs(2));
    EXPECT_EQ(view_.shown, 0);
  }
}

TEST_F(AlertSignalTest, APersistentOneRepeatsWhenThePlayHasEndedAndASecondHasPassed) {
  const std::pair<int, std::vector<long long>> cases[] = {
      {200, {0, 1000, 2000, 3000}}, {3000, {0, 3000}}, {1000, {0, 1000, 2000, 3000}}};
  for (const auto& [lasts, times] : cases) {
    SCOPED_TRACE(lasts);
    fakes::FakeEventLoop loop;
    fakes::FakeSoundPlayer player(loop);
    AlertSignal signal(view_, player, loop, trace_, choices_.alerts, "/app");
    Use(2);
    player.lasts = lasts;
    signal.Start();
    loop.Advance(3500);
    EXPECT_EQ(player.Times(), times);
  }
}

TEST_F(AlertSignalTest, ClosingTheWindowLetsThePlayFinishAndStartsNoOther) {
  StartPersistent(3000);
  loop_.Advance(1500);
  view_.Close();
  EXPECT_TRUE(player_.sounds);
  loop_.Advance(10'000);
  EXPECT_THAT(player_.plays, SizeIs(1));
}

TEST_F(AlertSignalTest, AStartWithinASecondOfTheLastOneHasItsOwnSecond) {
  StartPersistent(200);
  loop_.Advance(700);
  view_.Close();
  signal_.Start();  // at 700
  loop_.Advance(400);
  EXPECT_THAT(player_.plays, SizeIs(2)) << "the first one's second is over at 1000";
  loop_.Advance(700);
  EXPECT_THAT(player_.Times(), ElementsAre(0, 700, 1700));
  // A long play that is cut off by the next one ends late: its notice is not that one's.
  view_.Close();
  player_.lasts = 5000;
  signal_.Start();
  loop_.Advance(500);
  view_.Close();
  signal_.Start();
  const std::size_t count = player_.plays.size();
  loop_.Advance(3000);
  EXPECT_THAT(player_.plays, SizeIs(count)) << "the newest one still sounds";
}

TEST_F(AlertSignalTest, ChoosingAModeEndsIt) {
  int changes = 0;
  signal_.changed = [&] { ++changes; };
  StartPersistent(200);
  signal_.ChooseMode(2);
  EXPECT_FALSE(view_.IsOpen());
  EXPECT_EQ(changes, 1);
  loop_.Advance(5000);
  EXPECT_THAT(player_.plays, SizeIs(1));
}

TEST_F(AlertSignalTest, AChosenSoundIsHeardOnceAndGoesOnWhereOnePersists) {
  Use(1);
  signal_.ChooseSound(1);
  EXPECT_EQ(player_.open, "/app/Alerts/Raucous.wav");
  loop_.Advance(5000);
  EXPECT_THAT(player_.plays, SizeIs(1));
  player_.plays.clear();
  StartPersistent(200);
  loop_.Advance(500);
  signal_.ChooseSound(3);
  loop_.Advance(2100);
  EXPECT_THAT(player_.Times(), ElementsAre(5000, 5500, 6500, 7500));
  EXPECT_EQ(player_.plays[3].sound, "Pop");
}

TEST_F(AlertSignalTest, AResizeStopsTheSoundButNotWhatPersists) {
  StartPersistent(3000);
  loop_.Advance(400);
  signal_.StopPlaying();
  EXPECT_FALSE(player_.sounds);
  loop_.Advance(600);
  EXPECT_THAT(player_.Times(), ElementsAre(0, 1000)) << "its second was over";
  loop_.Advance(1500);
  signal_.StopPlaying();
  loop_.Advance(0);
  EXPECT_THAT(player_.Times(), ElementsAre(0, 1000, 2500)) << "behind its second it goes on at once";
}

TEST_F(AlertSignalTest, WhatFailsIsTriedEachSecondAndToldOnce) {
  player_.failure = "no device";
  StartPersistent(200);
  loop_.Advance(3000);
  EXPECT_THAT(player_.Times(), ElementsAre(0, 1000, 2000, 3000));
  EXPECT_THAT(traced_, ElementsAre(HasSubstr("no alert sound: no device")));
  player_.failure.clear();
  loop_.Advance(1500);
  EXPECT_THAT(traced_, SizeIs(1));
  player_.failure = "no device";
  loop_.Advance(1000);
  EXPECT_THAT(traced_, SizeIs(2)) << "it had worked meanwhile";
}

TEST_F(AlertSignalTest, WhileMutedNothingIsHeardOrShown) {
  bool isMuted = false;
  signal_.isMuted = [&] { return isMuted; };
  StartPersistent(5000);
  isMuted = true;
  signal_.Silence();
  EXPECT_FALSE(player_.sounds || view_.IsOpen());
  signal_.Start();
  signal_.ChooseSound(2);
  loop_.Advance(5000);
  EXPECT_THAT(player_.plays, SizeIs(1));
}

}  // namespace
}  // namespace pallomir
