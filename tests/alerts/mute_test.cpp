#include "alerts/mute.h"

#include <gmock/gmock.h>

#include "alerts/staleness.h"
#include "fakes/room_ports.h"

namespace pallomir {
namespace {

class MuteTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  // 15:30 local time.
  MuteTest() {
    localClock_.SetOffset(300);
    mute_.changed = [this] { ++changes_; };
  }

  Mute mute_{choices_.alerts.muteUntil, localClock_, loop_};
  int changes_ = 0;
};

TEST_F(MuteTest, LastsAsLongAsItWasChosenFor) {
  const std::tuple<MuteFor, Millis, const char*, const char*> cases[] = {
      {MuteFor::kHour, kHour, "2026-11-22 21:30:00", "Muted until 04:30:00 p"},
      {MuteFor::kUntilTomorrow, 8 * kHour + 30 * kMinute, "2026-11-23 05:00:00", "Muted until tomorrow"}};
  for (const auto& [time, lasts, stored, text] : cases) {
    SCOPED_TRACE(stored);
    const Millis start = clock_.now;
    mute_.Choose(time);
    EXPECT_EQ(settings_.saved["Mute Until"], stored);
    EXPECT_EQ(mute_.Text(), text);
    clock_.now = start + lasts - 1;
    EXPECT_TRUE(mute_.IsMuted());
    changes_ = 0;
    clock_.now = start + lasts;
    loop_.Advance(1000);
    EXPECT_EQ(changes_, 1) << "it is seen to be over";
    EXPECT_FALSE(mute_.IsMuted());
    EXPECT_EQ(settings_.saved["Mute Until"], "");
    clock_.now = start;
  }
}

TEST_F(MuteTest, UntilSwitchedOnHasNoEnd) {
  mute_.Choose(MuteFor::kUntilSwitchedOn);
  EXPECT_EQ(mute_.Text(), "Muted");
  clock_.now += 100 * kDay;
  EXPECT_TRUE(mute_.IsMuted());
  mute_.Choose(MuteFor::kNothing);
  EXPECT_FALSE(mute_.IsMuted());
  EXPECT_EQ(changes_, 2);
}

TEST_F(MuteTest, OutlastsTheRun) {
  const std::pair<const char*, bool> cases[] = {
      {"", false},
      {"Switched On", true},
      {"2026-11-22 20:30:01", true},
      {"2026-11-22 20:30:00", false},  // over
      {"2026-11-23 20:30:00", true},
      {"2026-11-23 20:30:01", false},  // more than anybody can choose
      {"2026-02-30 20:30:01", false},
      {"tomorrow", false}};
  for (const auto& [stored, isMuted] : cases) {
    settings_.values["Mute Until"] = stored;
    mute_.Open();
    EXPECT_EQ(mute_.IsMuted(), isMuted) << stored;
  }
}

TEST(Staleness, CountsFromTheNewestPoint) {
  const Millis now = 1'000 * kDay;
  const Millis ages[] = {0, kHour, 4 * kHour, 8 * kHour, kDay};
  for (int choice = 1; choice <= 4; ++choice) {
    EXPECT_FALSE(IsStale(now - ages[choice], now, choice)) << choice;
    EXPECT_TRUE(IsStale(now - ages[choice] - 1, now, choice)) << choice;
    EXPECT_FALSE(IsStale(std::nullopt, now, choice));
  }
  EXPECT_FALSE(IsStale(0, now, 5)) << "never";
}

}  // namespace
}  // namespace pallomir
