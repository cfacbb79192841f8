#include "live/live_window.h"

#include <gtest/gtest.h>

#include "fakes/fake_event_loop.h"
#include "live/live_pace.h"

namespace pallomir {
namespace {

const Millis kDayStart = ToMillis({2026, 11, 22});

TEST(LiveWindow, TheEndFollowsTheNewestPointWhereTheWindowHeldThePresent) {
  const struct {
    const char* what;
    Millis start, end, now, newest;  // minutes
    int then;                        // where the end is then; -1: it stays
  } rows[] = {
      {"the point lies inside", 0, 24 * 60, 600, 599, -1},
      {"at the very end", 0, 600, 600, 600, -1},
      {"24 hours: whole hours", 0, 24 * 60, 600, 24 * 60 + 1, 25 * 60},
      {"23 hours: quarters", 0, 22 * 60, 600, 23 * 60 - 1, 23 * 60},
      {"2 hours: five minutes", 480, 600, 599, 601, 605},
      {"1 hour: minutes", 540, 600, 600, 602, 602},
      {"chosen a moment ago", 540, 600, 601, 602, 602},
      {"the past", 540, 600, 602, 603, -1},
      {"the future", 660, 720, 600, 730, -1},
  };
  for (const auto& row : rows) {
    LiveWindow window;
    const TimeWindow shown{kDayStart + row.start * kMinute, kDayStart + row.end * kMinute};
    const Millis now = kDayStart + row.now * kMinute;
    window.Take(shown, now);
    const auto end = window.EndFor(kDayStart + row.newest * kMinute);
    EXPECT_EQ(end.value_or(0), row.then < 0 ? 0 : kDayStart + row.then * kMinute) << row.what;
    EXPECT_EQ(window.WantedUntil(shown, now),
              window.IsFollowing() ? std::max(shown.end, now + kDay) : shown.end)
        << row.what;
  }
}

TEST(LiveWindow, ItGoesOnFollowingUntilTheUserChoosesAnother) {
  LiveWindow window;
  const TimeWindow shown{kDayStart, kDayStart + kHour};
  window.Take(shown, kDayStart);
  window.Take(shown, kDayStart + 5 * kHour);
  EXPECT_TRUE(window.IsFollowing()) << "a reload in a silent hour";
  const auto end = window.EndFor(kDayStart + 5 * kHour);
  ASSERT_TRUE(end);
  window.Take({kDayStart, *end}, *end + kHour);
  EXPECT_TRUE(window.IsFollowing()) << "its own end";
  window.Take({kDayStart - kDay, kDayStart}, *end);
  EXPECT_FALSE(window.IsFollowing());
  EXPECT_FALSE(window.EndFor(*end + kDay));
  window.Take(shown, kDayStart);
  window.Forget();
  EXPECT_FALSE(window.IsFollowing());
}

TEST(LivePace, DrawsAtOnceAndThenOnceASecond) {
  fakes::FakeEventLoop loop;
  int drawn = 0;
  bool isBusy = false;
  LivePace pace(
      loop, [&] { return isBusy; }, [&] { ++drawn; });
  const auto wantFor = [&](int tenths) {
    for (int i = 0; i < tenths; ++i) {
      pace.Want();
      loop.Advance(100);
    }
    return drawn;
  };
  EXPECT_EQ(wantFor(1), 1) << "at once";
  EXPECT_EQ(wantFor(49), 6);
  isBusy = true;
  EXPECT_EQ(wantFor(30), 6) << "what is being drawn is not begun anew";
  isBusy = false;
  loop.Advance(1000);
  EXPECT_EQ(drawn, 7);
  loop.Advance(2000);
  EXPECT_EQ(drawn, 7);
  EXPECT_EQ(wantFor(1), 8);
  pace.Want();
  pace.Stop();
  loop.Advance(5000);
  EXPECT_EQ(drawn, 8);
}

}  // namespace
}  // namespace pallomir
