#include <cmath>
#include <random>

#include "base/data_point.h"
#include "station/demo/demo_source.h"
#include "station/demo/trip.h"
#include "station/station_testing.h"

namespace pallomir::station {
namespace {

const Millis kEndOfTime = ToMillis({2031, 12, 31, 23, 59, 59});
constexpr std::size_t kAll = 1'000'000;

Millis RandomMoment(std::mt19937& random) {
  const Millis first = ToMillis({2000, 1, 1});
  return first +
         static_cast<Millis>(random() % static_cast<std::uint64_t>((kEndOfTime - first) / kSecond)) * kSecond;
}

Place PlaceOf(const WireRecord& record) {
  return {record.latitude / kPositionUnitsPerDegree, record.longitude / kPositionUnitsPerDegree};
}

double SpeedOf(const WireRecord& record) {
  return (record.status & kStatusSpeedMask) * kMphPerSpeedStep * kMetersPerSecondPerMph;
}

class Demo : public testing::Test {
 protected:
  std::vector<WireRecord> Read(const DemoUnit& unit, Millis from, Millis until, std::size_t limit = kAll) {
    return source_.Read(unit.id, {from, until}, limit);
  }

  Millis now_ = kEndOfTime;
  DemoSource source_{[this] { return now_; }};
};

TEST_F(Demo, EveryThreeHoursOfEveryDayHaveReports) {
  std::mt19937 random(1);
  for (const DemoUnit& unit : DemoUnits()) {
    for (int i = 0; i < 60; ++i) {
      const Millis from = std::min(RandomMoment(random), kEndOfTime - 3 * kHour);
      EXPECT_GE(Read(unit, from, from + 3 * kHour).size(), 100u) << unit.description << " " << IsoText(from);
    }
    EXPECT_FALSE(Read(unit, ToMillis({2000, 1, 1}), ToMillis({2000, 1, 1, 3, 0, 0})).empty());
    EXPECT_FALSE(Read(unit, kEndOfTime - 3 * kHour, kEndOfTime).empty());
  }
}

TEST_F(Demo, AWindowIsThePartOfABiggerOne) {
  std::mt19937 random(2);
  for (const DemoUnit& unit : DemoUnits()) {
    for (int i = 0; i < 10; ++i) {
      const Millis from = RandomMoment(random);
      const auto day = Read(unit, from, from + kDay);
      const Millis inner = from + static_cast<Millis>(random() % 80000) * kSecond - 1;
      const TimeWindow window{inner, inner + static_cast<Millis>(random() % 20000) * kSecond};
      DemoSource fresh([this] { return now_; });
      const auto part = fresh.Read(unit.id, window, kAll);
      const auto packed = PackWindow({std::max(window.from, from), std::min(window.until, from + kDay)});
      if (!packed) continue;
      EXPECT_TRUE(std::ranges::equal(RecordsInside(part, *packed), RecordsInside(day, *packed)))
          << unit.description << " " << IsoText(window.from);
      const auto limited = Read(unit, window.from, window.until, 17);
      EXPECT_TRUE(std::ranges::equal(limited, std::span(part).first(std::min<std::size_t>(17, part.size()))));
    }
  }
}

TEST_F(Demo, ClientsOnDifferentDaysDontMakeEachSlotAgain) {
  int made = 0;
  constexpr std::size_t kSize = 100;
  const auto make = [&made](const DemoUnit&, std::int64_t slot) {
    ++made;
    return std::vector<WireRecord>(kSize, RecordAt(slot));
  };
  const DemoUnit &a = DemoUnits()[0], &b = DemoUnits()[1];
  DemoSlots slots(make, 5 * kSize);
  for (int page = 0; page < 20; ++page) {
    for (const std::int64_t day : {1, 2}) {
      EXPECT_EQ(slots.Reports(a, day).front(), RecordAt(day));
      slots.Reports(b, day);
    }
  }
  EXPECT_EQ(made, 4);
  // There is room for one more; then the one that was not read for longest goes.
  for (const std::int64_t day : {3, 1, 4, 1}) slots.Reports(a, day);
  EXPECT_EQ(made, 6);
  slots.Reports(b, 1);
  EXPECT_EQ(made, 7);
  DemoSlots small(make, kSize - 1);
  EXPECT_EQ(small.Reports(a, 1).size(), kSize) << "the one asked for is always there";
}

TEST_F(Demo, NothingIsKnownOfTheFuture) {
  now_ = kNoon;
  const DemoUnit& unit = DemoUnits()[0];
  const auto known = Read(unit, kNoon - kHour, kNoon + kHour);
  ASSERT_FALSE(known.empty());
  EXPECT_LE(known.back().time, *EncodePackedTime(kNoon));
  now_ = kNoon + 2 * kMinute;
  const auto later = Read(unit, kNoon + kSecond, kNoon + kHour);
  EXPECT_FALSE(later.empty()) << "new reports turn up";
}

TEST_F(Demo, DrivesAsVehiclesDo) {
  std::mt19937 random(3);
  for (const DemoUnit& unit : DemoUnits()) {
    std::size_t moving = 0, wrongHeadings = 0, headings = 0, contacts = 0, unheard = 0;
    double top = 0;
    for (int day = 0; day < 4; ++day) {
      const Millis from = RandomMoment(random);
      const auto records = Read(unit, from, from + kDay);
      for (std::size_t i = 1; i < records.size(); ++i) {
        const WireRecord &a = records[i - 1], &b = records[i];
        ASSERT_LT(a.time, b.time);
        const double seconds =
            static_cast<double>(*DecodePackedTime(b.time) - *DecodePackedTime(a.time)) / kSecond;
        const double meters = GroundDistance(PlaceOf(a), PlaceOf(b));
        const bool isMoving = SpeedOf(a) > 0 && SpeedOf(b) > 0;
        ASSERT_TRUE(seconds >= 5 && seconds <= (isMoving ? 15 : 75) && meters <= 36 * seconds + 8 &&
                    std::fabs(SpeedOf(b) - SpeedOf(a)) <= 2.2 * seconds)
            << unit.description << " " << IsoText(*DecodePackedTime(a.time));
        if (meters > 80 && SpeedOf(a) > 5) {
          ++headings;
          const double off = std::remainder(Bearing(PlaceOf(a), PlaceOf(b)) - (b.status >> 12) * 22.5, 360);
          wrongHeadings += std::fabs(off) > 30 ? 1 : 0;
        }
        moving += SpeedOf(b) > 4 ? 1 : 0;
        contacts += (b.status & kStatusReceived) != 0 ? 1 : 0;
        unheard += (b.status & kStatusNotReceived) != 0 ? 1 : 0;
        top = std::max(top, SpeedOf(b));
      }
    }
    EXPECT_GT(moving, 4 * 1000u) << unit.description;
    EXPECT_LT(wrongHeadings, headings / 12) << unit.description;
    EXPECT_GT(top, 15) << unit.description;
    EXPECT_GT(contacts, 20u) << unit.description;
    EXPECT_GT(unheard, 0u) << unit.description;
  }
}

TEST_F(Demo, GoesWhereItsNameSays) {
  const std::pair<std::size_t, Place> cases[] = {
      {0, {40.6218, -75.379}},                             // Bethlehem
      {1, {40.6912, -75.209}},                             // Easton
      {2, {40.6023, -75.4714}},                            // Allentown
      {3, {40.5795, -75.3407}},                            // Hellertown
      {4, {40.6218, -75.379}},  {4, {39.8744, -75.2424}},  // the airport
      {5, {32.7767, -96.797}},  {5, {36.1627, -86.7816}}, {6, {36.1627, -86.7816}}, {6, {40.6218, -75.379}},
      {7, {44.97, -92.75}},     {7, {43.0389, -87.9065}}, {8, {44.9778, -93.265}},
  };
  for (const auto& [unit, place] : cases) {
    double nearest = 1e9;
    for (const WireRecord& record : Read(DemoUnits()[unit], kNoon, kNoon + 3 * kDay))
      nearest = std::min(nearest, GroundDistance(PlaceOf(record), place));
    EXPECT_LT(nearest, 1500) << DemoUnits()[unit].description;
  }
}

}  // namespace
}  // namespace pallomir::station
