#include "tracking/mobile_units.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(MobileUnits, StoredListsAreReadRecordByRecord) {
  const std::pair<std::string, std::vector<MobileUnit>> cases[] = {
      {"", {}},
      {"X0123456789ABFirst~-0123456789ACSecond~",
       {{true, "0123456789AB", "First"}, {false, "0123456789AC", "Second"}}},
      {"X0123456789ABFirst~X0123456789ACtrailing", {{true, "0123456789AB", "First"}}},
      {"X0123456789AB~", {{true, "0123456789AB", ""}}},
      {"~X~Xshort~", {{false, "", ""}, {true, "", ""}, {true, "short", ""}}},
      {"X0123456789ABCaf\xC3\xA9 \xFF~", {{true, "0123456789AB", "Caf\xC3\xA9 \xFF"}}},
  };
  for (const auto& [stored, units] : cases) EXPECT_EQ(ParseMobileUnits(stored), units) << stored;
  std::string many;
  for (int i = 0; i < 10005; ++i) many += "X0123456789AB~";
  EXPECT_EQ(ParseMobileUnits(many).size(), kMaxMobileUnits);
}

TEST(MobileUnits, BooksFollowTheEnabledUnits) {
  const UnitBook book = EnumerateUnits(
      ParseMobileUnits("-00000000000AOff~X00000000000BOn~X00000000000COn~X00000000000BTwice~Xbad~"));
  EXPECT_EQ(book.definedCount, 5u);
  EXPECT_EQ(book.enabledCount, 4u);
  EXPECT_EQ(book.listToEnabled, (std::vector<std::size_t>{0, 0, 1, 2, 3, 4}));
  EXPECT_EQ(book.enabledToList, (std::vector<std::size_t>{0, 2, 3, 4, 5}));
  EXPECT_EQ(book.requestText, "D00000000000B00000000000C00000000000B");
  EXPECT_EQ(book.EnabledPositionOf("00000000000B"), 1u) << "the first of equals receives the data";
  EXPECT_EQ(book.EnabledPositionOf("00000000000A"), 0u);
  EXPECT_EQ(UnitColour(4), 0u);
  EXPECT_EQ(UnitColour(5), 0x800000u);
}

}  // namespace
}  // namespace pallomir
