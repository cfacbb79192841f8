#include "timeline/date_pickers.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(DatePickers, TheEndStaysAMomentThatADateCanHold) {
  DatePickers pickers;
  pickers.SetWindow({ToMillis({2026, 11, 16}), ToMillis({2026, 11, 17})});
  pickers.Changed(0, ToMillis({9999, 12, 31, 5}));
  EXPECT_EQ(pickers.Value(1), LastMoment());
  EXPECT_TRUE(pickers.IsEndVisible()) << "it isn't a day";
}

}  // namespace
}  // namespace pallomir
