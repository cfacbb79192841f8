#include "station/wire/write_plan.h"

#include <gtest/gtest.h>

#include <vector>

namespace pallomir::station {
namespace {

using Sizes = std::vector<std::size_t>;

// Whether a reader that has everything up to `position` would take it for the whole.
bool IsForbidden(const Sizes& packetSizes, std::size_t position) {
  std::size_t border = 0;
  for (const std::size_t size : packetSizes) {
    if (position >= border && position <= border + kForbiddenBehindPacket) return true;
    border += size;
  }
  return position >= border;
}

TEST(WritePlan, EveryPlaceOfSmallAnswers) {
  const Sizes answers[] = {{34}, {34, 34}, {34, 48, 34}, {18, 18, 18}, {62, 34}};
  for (const Sizes& sizes : answers) {
    std::size_t total = 0;
    for (const std::size_t size : sizes) total += size;
    for (std::size_t written = 0; written < sizes[0]; ++written) {
      for (std::size_t limit = 1; limit <= total + 1; ++limit) {
        const std::size_t whole = PlanWrite(sizes, written, true, limit);
        ASSERT_GT(whole, 0u) << written << " " << limit;
        ASSERT_LE(whole, limit + 9);
        ASSERT_LE(written + whole, total);
        ASSERT_TRUE(written + whole == total || !IsForbidden(sizes, written + whole))
            << written << " " << limit;
        const std::size_t part = PlanWrite(sizes, written, false, limit);
        ASSERT_TRUE(part == 0 || !IsForbidden(sizes, written + part)) << written << " " << limit;
        ASSERT_LT(written + part, total);
      }
    }
  }
}

TEST(WritePlan, WaitsForMoreAtTheEndOfWhatIsThere) {
  EXPECT_EQ(PlanWrite({}, 0, false, 100), 0u);
  EXPECT_EQ(PlanWrite(Sizes{34}, 33, false, 100), 0u);
  EXPECT_EQ(PlanWrite(Sizes{34}, 33, true, 100), 1u);
  EXPECT_EQ(PlanWrite(Sizes{34}, 0, false, 100), 33u);
}

}  // namespace
}  // namespace pallomir::station
