#include "timeline/date_pickers.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(DatePickers, FormatsAreAsShortAsTheValueAllows) {
  const struct {
    CivilTime time;
    const char* text;
  } cases[] = {
      {{2026, 11, 16}, "Mon,Nov16"},
      {{2026, 11, 16, 15}, "Mon,Nov16, 3 PM"},
      {{2026, 11, 16, 15, 30}, "Mon,Nov16, 3:30 PM"},
      {{2026, 11, 16, 15, 30, 10}, "Mon,Nov16, 3:30:10 PM"},
      {{2026, 11, 6, 0, 0, 10}, "Fri,Nov6, 12:00:10 AM"},
      {{2026, 11, 6, 12}, "Fri,Nov6, 12 PM"},
  };
  for (const auto& c : cases) EXPECT_EQ(PickerText(ToMillis(c.time), PickerFormat(ToMillis(c.time))), c.text);
  EXPECT_EQ(PickerText(ToMillis({2026, 3, 5, 4, 7, 9}), kEditingFormat), "Thu 03-05-26 04:07:09 AM");
}

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
  pickers.DroppedDown(1);
  EXPECT_FALSE(pickers.ClosedUp(1)) << "nothing was chosen";
}

}  // namespace
}  // namespace pallomir
