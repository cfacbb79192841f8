#include "reports/outside_check.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "reports_testing.h"

namespace pallomir {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

// Whatever the length, one record that lies inside or is too early is seen wherever it stands, and one on
// either side of an edge for what it is.
TEST(OutsideCheck, SeesASingleRecord) {
  const PositionBox boxes[] = {{-5, 5, 1000, 2000}, {kLeast, -7, 7, kMost}, {3, 3, kLeast, kMost}};
  std::mt19937 random(5);
  for (const PositionBox& box : boxes) {
    const auto outside = [&box](std::int64_t second) {
      return RecordAt(second, box.maxLatitude + 1, box.minLongitude);
    };
    for (std::size_t count = 1; count < 40; ++count) {
      std::vector<WireRecord> records;
      for (std::size_t i = 0; i < count; ++i) {
        records.push_back(outside(static_cast<std::int64_t>(10 + i / 2)));  // equal times do not descend
        if (random() % 3 == 0) records.back().time |= kPackedTimeFlag;
      }
      const std::size_t at = random() % count;
      const auto expect = [&](const WireRecord& record, bool isOutside, const char* what) {
        std::vector<WireRecord> changed = records;
        changed[at] = record;
        // Memory ends with the file.
        const std::string text = FileOf(changed);
        const std::vector<std::uint8_t> file(text.begin(), text.end());
        for (const OutsideCheck check : OutsideChecks())
          EXPECT_EQ(check(file, box), isOutside) << what << ", record " << at << " of " << count;
      };
      WireRecord record = records[at];
      expect(record, true, "outside");
      for (const std::int32_t latitude : {box.minLatitude, box.maxLatitude})
        for (const std::int32_t longitude : {box.minLongitude, box.maxLongitude}) {
          record.latitude = latitude;
          record.longitude = longitude;
          expect(record, false, "inside");
        }
      if (box.minLongitude > kLeast) {
        --(record.longitude = box.minLongitude);
        expect(record, true, "west of it");
      }
      if (box.maxLongitude < kMost) {
        ++(record.longitude = box.maxLongitude);
        expect(record, true, "east of it");
      }
      if (box.minLatitude > kLeast) {
        record = records[at];
        record.latitude = box.minLatitude - 1;
        expect(record, true, "south of it");
      }
      if (at > 0) {
        record = records[at];
        record.time = Second(9);
        expect(record, false, "too early");
      }
    }
  }
}

}  // namespace
}  // namespace pallomir
