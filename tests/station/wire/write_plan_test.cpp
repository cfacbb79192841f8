#include "station/wire/write_plan.h"

#include <gtest/gtest.h>

#include <random>
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

// Many answers written to a kernel that takes what it likes: all bytes go out, and wherever the kernel took
// what was planned, no write ended at a forbidden place.
TEST(WritePlan, GetsThroughWithPartialWrites) {
  std::mt19937 random(7);
  const auto upTo = [&random](std::size_t n) { return random() % n; };
  for (int round = 0; round < 2000; ++round) {
    Sizes sizes(1 + upTo(12));
    for (std::size_t& size : sizes) size = 20 + 14 * (1 + upTo(round % 2 == 0 ? 3 : 720));
    const std::size_t limit = 1 + upTo(20000);
    const Sizes answer = sizes;
    std::size_t total = 0, sent = 0, first = 0;
    for (const std::size_t size : sizes) total += size;
    for (int writes = 0; sent < total; ++writes) {
      ASSERT_LT(writes, 400000);
      const std::size_t planned = PlanWrite(sizes, first, true, limit);
      ASSERT_GT(planned, 0u);
      const bool taken = upTo(3) != 0;
      const std::size_t count = taken ? planned : upTo(planned + 1);
      sent += count;
      first += count;
      if (taken && sent < total) {
        ASSERT_FALSE(IsForbidden(answer, sent));
      }
      for (; !sizes.empty() && first >= sizes.front(); sizes.erase(sizes.begin())) first -= sizes.front();
    }
    ASSERT_EQ(sent, total);
    ASSERT_TRUE(sizes.empty());
  }
}

}  // namespace
}  // namespace pallomir::station
