#include "base/number_format.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(NumberFormat, DegreesShowTheirSignAndSixDecimals) {
  const std::pair<double, const char*> cases[] = {{40.7128, "+040.712800"},    {-74.006, "-074.006000"},
                                                  {0, "+000.000000"},          {-0.0000001, "+000.000000"},
                                                  {-0.0000005, "-000.000001"}, {179.9999999, "+180.000000"},
                                                  {-122.5, "-122.500000"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(FormatSigned(value, 3, 6), text);
}

TEST(NumberFormat, RoundsHalfAwayFromZero) {
  EXPECT_EQ(FormatFixed(34.5233535, 1, 1), "34.5");
  EXPECT_EQ(FormatFixed(0.25, 1, 1), "0.3");
  EXPECT_EQ(FormatFixed(1.005, 1, 2), "1.01");
  EXPECT_EQ(FormatFixed(-0.04, 1, 1), "0.0");
  EXPECT_EQ(FormatFixed(-0.05, 1, 1), "-0.1");
}

TEST(NumberFormat, HexKeepsTheRightmostDigits) {
  EXPECT_EQ(HexDigits(0x2A, 4), "002A");
  EXPECT_EQ(HexDigits(0x1234567, 6), "234567");
}

TEST(NumberFormat, NumbersAreReadWholeOrNotAtAll) {
  EXPECT_EQ(ParseInteger("+000012"), 12);
  EXPECT_EQ(ParseInteger("-000012"), -12);
  EXPECT_EQ(ParseInteger("   12 "), 12);
  EXPECT_EQ(ParseNumber("-0.5"), -0.5);
  for (const char* bad : {"", " ", "+", "-", "+-1", "1x", "x", "1 2", "99999999999999999999"}) {
    EXPECT_FALSE(ParseInteger(bad)) << bad;
  }
  for (const char* bad : {"", "nan", "inf", "-inf", "1e999", "1,5"}) EXPECT_FALSE(ParseNumber(bad)) << bad;
  EXPECT_EQ(ParseHex("0aF"), 0xAFu);
  for (const char* bad : {"", "-1", "0x1", "G", "12345678901234567", "00000000000000001"})
    EXPECT_FALSE(ParseHex(bad)) << bad;
}

}  // namespace
}  // namespace pallomir
