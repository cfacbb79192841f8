#include "window/normal_placement.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

constexpr PixelRect kArea{10, 20, 1601, 1000};

TEST(NormalPlacement, HalvesAndQuartersOfTheAreaAreTheDesktops) {
  const std::pair<PixelRect, bool> cases[] = {
      {{10, 20, 800, 1000}, true},    // left half
      {{10, 20, 801, 1000}, true},    // of an odd width either half may be the larger one
      {{810, 20, 801, 1000}, true},   // right half
      {{10, 520, 1601, 500}, true},   // lower half
      {{811, 520, 800, 500}, true},   // a corner
      {{10, 20, 1601, 1000}, false},  // all of it: the mode says so
      {{10, 20, 803, 1000}, false},  {{10, 20, 799, 1000}, false}, {{11, 20, 800, 1000}, false},
      {{10, 20, 800, 998}, false},   {{10, 21, 800, 1000}, false}, {{200, 20, 800, 500}, false},
  };
  for (const auto& [bounds, isTile] : cases) {
    EXPECT_EQ(IsTileOf(bounds, kArea), isTile)
        << bounds.left << "," << bounds.top << " " << bounds.width << "x" << bounds.height;
  }
}

}  // namespace
}  // namespace pallomir
