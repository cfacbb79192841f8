#include "timeline/date_pickers.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(DatePickers, AChangeInAnOpenCalendarWaitsForItsEnd) {
  DatePickers pickers;
  const Millis start = ToMillis({2026, 11, 16});
  pickers.SetWindow({start, start + 3 * kDay});
  pickers.GotFocus(0);
  pickers.DroppedDown(0);
  pickers.Changed(0, start + kHour);
  EXPECT_FALSE(pickers.IsReloadVisible());
  EXPECT_EQ(pickers.Window().Length(), 3 * kDay - kHour);
  EXPECT_TRUE(pickers.ClosedUp(0));
  EXPECT_TRUE(pickers.IsReloadVisible());
  EXPECT_EQ(pickers.Window(), (TimeWindow{start + kHour, start + kHour + kDay}));
  EXPECT_TRUE(pickers.IsEndVisible());
  EXPECT_EQ(pickers.Format(1), "ddd,MMMd, h tt");
  pickers.DroppedDown(0);
  pickers.LostFocus(0);
  pickers.Reloaded();
  EXPECT_FALSE(pickers.IsReloadVisible() || pickers.IsEndVisible()) << "it is a day again";
  pickers.Changed(1, start);
  EXPECT_TRUE(pickers.IsReloadVisible()) << "typed";
  pickers.DroppedDown(1);
  EXPECT_FALSE(pickers.ClosedUp(1)) << "nothing was chosen";
}

TEST(DatePickers, ADateIsShownWithWhatItHasOfATime) {
  const struct {
    CivilTime time;
    const char* format;
  } cases[] = {{{2026, 11, 16}, "ddd,MMMd"},
               {{2026, 11, 16, 5}, "ddd,MMMd, h tt"},
               {{2026, 11, 16, 0, 7}, "ddd,MMMd, h:mm tt"},
               {{2026, 11, 16, 0, 0, 9}, "ddd,MMMd, h:mm:ss tt"},
               {{2026, 11, 16, 5, 7, 9}, "ddd,MMMd, h:mm:ss tt"}};
  for (const auto& c : cases) EXPECT_EQ(PickerFormat(ToMillis(c.time)), c.format);
}

TEST(DatePickers, TheEndStaysAMomentThatADateCanHold) {
  DatePickers pickers;
  pickers.SetWindow({ToMillis({2026, 11, 16}), ToMillis({2026, 11, 17})});
  pickers.Changed(0, ToMillis({9999, 12, 31, 5}));
  EXPECT_EQ(pickers.Value(1), LastMoment());
  EXPECT_TRUE(pickers.IsEndVisible()) << "it isn't a day";
}

}  // namespace
}  // namespace pallomir
