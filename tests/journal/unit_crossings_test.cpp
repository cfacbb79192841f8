#include "journal/unit_crossings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>

namespace pallomir {
namespace {

constexpr int kWorldUnitsPerMeter = 26;  // at the equator

// In words: "in 0 10, out 12 40": entered at second 0, 10 m along the border, left at second 12, 40 m along.
std::vector<ZoneCrossing> Read(const std::string& text, ZoneOrdinal zone = 0) {
  std::vector<ZoneCrossing> crossings;
  std::istringstream words(text);
  std::string what;
  int second = 0, meters = 0;
  while (words >> what >> second >> meters) {
    ZoneCrossing crossing;
    crossing.utc = crossing.wayEnd = second * kSecond;
    crossing.zone = zone;
    crossing.hasEntered = what == "in";
    crossing.place = {meters * kWorldUnitsPerMeter, 1 << 29};
    crossings.push_back(crossing);
  }
  return crossings;
}

std::string Seconds(const std::vector<ZoneCrossing>& crossings) {
  std::string text;
  for (const ZoneCrossing& crossing : crossings)
    text += (crossing.hasEntered ? "in" : "out") + std::to_string(crossing.utc / kSecond) + ' ';
  return text;
}

TEST(UnitCrossings, AUnitThatWaversHasCrossedOnce) {
  const std::pair<const char*, const char*> cases[] = {
      {"in 0 0 out 5 0", "in0 out5 "},
      {"in 0 0 out 5 0 in 10 0", "in0 "},
      {"in 0 0 out 5 0 in 10 0 out 15 0", "in0 out15 "},
      {"in 0 0 out 30 0 in 60 0 out 90 0 in 120 0", "in0 "},
      {"in 0 0 out 31 0 in 61 0", "in0 out31 in61 "},
      {"in 0 0 out 5 30 in 10 0", "in0 "},
      {"in 0 0 out 5 31 in 10 31", "in0 out5 in10 "},
      {"in 0 0 out 100 0 in 110 0 out 120 0 in 500 0", "in0 out100 in500 "},
  };
  for (const auto& [crossings, counting] : cases) {
    UnitCrossings unit({});
    EXPECT_EQ(Seconds(unit.Replace(-1, 1000 * kSecond, Read(crossings)).counting), counting) << crossings;
  }
}

TEST(UnitCrossings, EachZoneHasItsOwnBorder) {
  auto crossings = Read("in 0 0 out 10 0");
  const auto other = Read("in 5 0 out 15 0", 1);
  crossings.insert(crossings.begin() + 1, other[0]);
  crossings.push_back(other[1]);
  UnitCrossings unit({});
  EXPECT_EQ(unit.Replace(-1, 20 * kSecond, crossings).counting, crossings);
}

// A journal that gets the stretches one after the other holds what one that got all at once holds, however
// the way was cut and in whatever order the parts came.
TEST(UnitCrossings, PartsInAnyOrderGiveTheWhole) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    std::string text;
    int second = 1;
    for (int i = 0; i < 30; ++i, second += 1 + static_cast<int>(random() % 50)) {
      const char* const what = i % 2 == 0 ? "in " : "out ";
      text += what + std::to_string(second) + ' ' + std::to_string(random() % 50) + ' ';
    }
    const auto all = Read(text);
    std::vector<std::pair<int, int>> parts;
    for (int from = 0; from <= second; from = parts.back().second)
      parts.emplace_back(from, from + 1 + static_cast<int>(random() % 200));
    std::ranges::shuffle(parts, random);
    UnitCrossings unit({}), whole({});
    std::vector<ZoneCrossing> journal;
    for (const auto& [from, until] : parts) {
      std::vector<ZoneCrossing> part = all;
      std::erase_if(part, [from = from * kSecond, until = until * kSecond](const ZoneCrossing& crossing) {
        return crossing.utc <= from || crossing.utc > until;
      });
      const auto stretch = unit.Replace(from * kSecond, until * kSecond, part);
      std::erase_if(journal, [&](const ZoneCrossing& known) {
        return known.utc >= stretch.from && known.utc <= stretch.until;
      });
      journal.insert(journal.end(), stretch.counting.begin(), stretch.counting.end());
    }
    std::ranges::sort(journal, {}, &ZoneCrossing::utc);
    EXPECT_EQ(Seconds(journal), Seconds(whole.Replace(0, second * kSecond, all).counting)) << text;
  }
}

}  // namespace
}  // namespace pallomir
