#include "window/pointer_approach.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(PointerApproach, ItEndsWhenThePointerTurnsAway) {
  const PixelRect picture{5, 5, 600, 250};
  const struct {
    int x, y;
    bool isOnTheWay;
  } way[] = {{1100, 0, true},  {1000, 40, true},  {1003, 40, true},  {1006, 40, false},
             {900, 300, true}, {610, 300, true},  {604, 254, true},  {300, 100, true},
             {606, 100, true}, {609, 100, false}, {300, 259, false}, {300, 258, true}};
  PointerApproach approach;
  approach.Begin();
  for (const auto& at : way)
    EXPECT_EQ(approach.IsOnTheWay(at.x, at.y, picture), at.isOnTheWay) << at.x << "," << at.y;
  approach.Begin();
  EXPECT_TRUE(approach.IsOnTheWay(1100, 700, picture)) << "another way, from anywhere";
}

}  // namespace
}  // namespace pallomir
