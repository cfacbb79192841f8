#include "base/civil_time.h"

#include <gtest/gtest.h>

#include "base/packed_time.h"

namespace pallomir {
namespace {

TEST(CivilTime, GoesThereAndBackOverTheWholeRange) {
  for (Millis time = ToMillis({1899, 12, 30}); time < ToMillis({2101, 1, 1});
       time += 37 * kHour + 61 * kSecond) {
    ASSERT_EQ(ToMillis(ToCivil(time)), time);
    ASSERT_TRUE(IsPossible(ToCivil(time)));
  }
}

TEST(CivilTime, CarriesFieldsOutsideTheirRanges) {
  EXPECT_EQ(ToCivil(ToMillis({2026, 3, 0})), (CivilTime{2026, 2, 28}));
  EXPECT_EQ(ToCivil(ToMillis({2026, 0, 1})), (CivilTime{2025, 12, 1}));
  EXPECT_EQ(ToCivil(ToMillis({2026, 13, 32})), (CivilTime{2027, 2, 1}));
}

TEST(CivilTime, FloorsBeforeTheEpochToo) {
  EXPECT_EQ(ToCivil(-1), (CivilTime{1969, 12, 31, 23, 59, 59}));
  EXPECT_EQ(WholeDay(-1), -kDay);
  EXPECT_EQ(DayOfWeek(-1), 3);
  EXPECT_EQ(DayOfWeek(ToMillis({2026, 11, 22})), 0);
}

TEST(CivilTime, RefusesDatesThatDoNotExist) {
  const CivilTime impossible[] = {
      {2026, 2, 29}, {2026, 4, 31},    {2026, 0, 1},     {2026, 13, 1},       {2026, 1, 0},
      {2026, 1, 32}, {2026, 1, 1, 24}, {2026, 1, 1, -1}, {2026, 1, 1, 0, 60}, {2026, 1, 1, 0, 0, 60}};
  for (const CivilTime& time : impossible) EXPECT_FALSE(IsPossible(time)) << time.month << "/" << time.day;
  EXPECT_TRUE(IsPossible({2024, 2, 29, 23, 59, 59}));
}

TEST(CivilTime, Texts) {
  const std::pair<CivilTime, const char*> cases[] = {
      {{2026, 11, 22, 0, 0, 0}, "11/22/26 12:00:00 AM|12:00:00 a|2026-11-22 00:00:00"},
      {{2026, 1, 2, 12, 5, 9}, "01/02/26 12:05:09 PM|12:05:09 p|2026-01-02 12:05:09"},
      {{2009, 5, 19, 23, 59, 59}, "05/19/09 11:59:59 PM|11:59:59 p|2009-05-19 23:59:59"},
  };
  for (const auto& [time, texts] : cases) {
    const Millis at = ToMillis(time) + 999;
    EXPECT_EQ(DateTimeText(at) + '|' + TimeOfDayText(at) + '|' + IsoText(at), texts);
  }
}

TEST(PackedTime, OrderIsTimeOrderAndTheFlagIsIgnored) {
  std::uint32_t before = 0;
  for (Millis time = ToMillis({2000, 1, 1}); time < ToMillis({2032, 1, 1});
       time += 11 * kHour + 13 * kSecond) {
    const auto packed = EncodePackedTime(time);
    ASSERT_TRUE(packed);
    ASSERT_GT(*packed, before);
    before = *packed;
    ASSERT_EQ(DecodePackedTime(*packed), time);
    ASSERT_EQ(DecodePackedTime(*packed | kPackedTimeFlag), time);
  }
  EXPECT_EQ(EncodePackedTime(ToMillis({2001, 2, 3, 4, 5, 6})),
            1u * 67108864 + 2u * 4194304 + 3u * 131072 + 4u * 4096 + 5u * 64 + 6u);
}

TEST(PackedTime, HoldsNoYearOutsideItsRangeAndNoImpossibleDate) {
  EXPECT_FALSE(EncodePackedTime(ToMillis({1999, 12, 31, 23, 59, 59})));
  EXPECT_FALSE(EncodePackedTime(ToMillis({2032, 1, 1})));
  // Every day field, and every time of day at one date.
  const auto field = [](std::uint32_t packed, int shift, std::uint32_t mask) {
    return static_cast<int>(packed >> shift & mask);
  };
  const auto expectTheCalendars = [&field](std::uint32_t packed) {
    const CivilTime time{2000 + field(packed, 26, 31), field(packed, 22, 15), field(packed, 17, 31),
                         field(packed, 12, 31),        field(packed, 6, 63),  field(packed, 0, 63)};
    ASSERT_EQ(IsPossiblePackedTime(packed), IsPossible(time)) << packed;
    ASSERT_EQ(DecodePackedTime(packed).has_value(), IsPossible(time)) << packed;
  };
  for (std::uint32_t day = 0; day < 1u << 15; ++day) expectTheCalendars(day << 17 | 23 << 12 | 59 << 6 | 59);
  for (std::uint32_t time = 0; time < 1u << 17; ++time)
    expectTheCalendars(26u << 26 | 11u << 22 | 22u << 17 | time);
}

}  // namespace
}  // namespace pallomir
