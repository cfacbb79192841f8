#include "window/normal_placement.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

constexpr PixelRect kArea{10, 20, 1601, 1000};

TEST(NormalPlacement, HalvesAndQuartersOfTheAreaAreTheDesktops) {
  const struct {
    PixelRect bounds;
    bool isTile;
  } cases[] = {
      {{10, 20, 800, 1000}, true},    // left half
      {{10, 20, 801, 1000}, true},    // of an odd width either half may be the larger one
      {{810, 20, 801, 1000}, true},   // right half
      {{10, 520, 1601, 500}, true},   // lower half
      {{811, 520, 800, 500}, true},   // a corner
      {{10, 20, 1601, 1000}, false},  // all of it: the mode says so
      {{10, 20, 803, 1000}, false},  {{10, 20, 799, 1000}, false}, {{11, 20, 800, 1000}, false},
      {{10, 20, 800, 998}, false},   {{10, 21, 800, 1000}, false}, {{200, 20, 800, 500}, false},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(IsTileOf(row.bounds, kArea), row.isTile)
        << row.bounds.left << "," << row.bounds.top << " " << row.bounds.width << "x" << row.bounds.height;
  }
}

TEST(NormalPlacement, TheLastPlaceThatIsNotTheDesktopsIsStoredOnce) {
  const PixelRect first{1, 2, 700, 500};
  const PixelRect second{3, 4, 700, 500};
  NormalPlacement placement;
  EXPECT_FALSE(placement.Take());
  placement.Note(first);
  placement.Note(second);
  placement.Note(second);  // moved and resized are told apart
  placement.Disown(kArea);
  EXPECT_EQ(placement.Take(), second);
  EXPECT_FALSE(placement.Take());
  placement.Note(first);
  placement.Note(kArea);
  placement.Note(kArea);
  placement.Disown(kArea);
  EXPECT_EQ(placement.Take(), first);
  placement.Note(kArea);
  placement.Disown(kArea);
  EXPECT_FALSE(placement.Take()) << "what was stored before is not noted again";
}

}  // namespace
}  // namespace pallomir
