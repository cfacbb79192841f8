#include "reports/search_area.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "oracles/literal_zones.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

TEST(SearchArea, DoublesItsHeightWithEachZoomBelow13) {
  EXPECT_NEAR(HalfHeightAt(13), 0.00164, 0.00001);
  for (const int zoom : {14, 15, 22}) EXPECT_EQ(HalfHeightAt(zoom), HalfHeightAt(13)) << zoom;
  EXPECT_EQ(HalfHeightAt(0), 8192 * HalfHeightAt(13));
}

// The limits in whole units agree with the comparison of degrees that they stand for, on every edge.
TEST(SearchArea, LeavesItsEdgesOutside) {
  struct Place {
    double lat, lng, halfHeight;
  };
  std::vector<Place> places = {
      {0, 0, 1},     {45, 7, HalfHeightAt(13)}, {-33.9, -70.25, HalfHeightAt(9)}, {85, 179.999, 0.5},
      {90, 0, 0.01}, {0, 0, 1.0 / 600000}};
  std::mt19937 random(7);
  const auto fraction = [&random] { return static_cast<double>(random()) / 4294967296.0; };
  for (int i = 0; i < 2000; ++i)
    places.push_back({fraction() * 170 - 85, fraction() * 360 - 180, std::ldexp(fraction(), -(i % 14))});
  for (const auto& [lat, lng, half] : places) {
    const double halfWidth = half / std::cos(lat * std::numbers::pi / 180);
    const auto rule = [&](std::int64_t latitude, std::int64_t longitude) {
      const double la = static_cast<double>(latitude) / 600000, lo = static_cast<double>(longitude) / 600000;
      return lat - half < la && la < lat + half && lng - halfWidth < lo && lo < lng + halfWidth;
    };
    const SearchArea area = SearchArea::Around(lat, lng, half);
    const auto middleLat = static_cast<std::int32_t>(lat * 600000);
    const auto middleLng = static_cast<std::int32_t>(lng * 600000);
    for (const double edge : {lat - half, lat + half})
      for (std::int32_t at = static_cast<std::int32_t>(edge * 600000) - 2, end = at + 5; at < end; ++at)
        EXPECT_EQ(area.Contains(at, middleLng), rule(at, middleLng)) << lat << " " << at;
    for (const double edge : {lng - halfWidth, lng + halfWidth}) {
      if (std::abs(edge) > 3000) continue;
      for (std::int32_t at = static_cast<std::int32_t>(edge * 600000) - 2, end = at + 5; at < end; ++at)
        EXPECT_EQ(area.Contains(middleLat, at), rule(middleLat, at)) << lng << " " << at;
    }
  }
}

TEST(SearchArea, OfNothingHoldsNothing) {
  for (const SearchArea& area : {SearchArea::Rectangle(1, 1, 0, 1), SearchArea::Rectangle(2, 1, 0, 1),
                                 SearchArea::Rectangle(0, NAN, 0, 1), SearchArea::Rectangle(5000, 6000, 0, 1),
                                 SearchArea::Rectangle(0, 1e-7, 0, 1)}) {
    EXPECT_FALSE(area.Contains(0, 0));
    EXPECT_FALSE(area.Contains(600000, 600000));
  }
}

TEST(SearchArea, OfAZoneIsWhereItLiesOnTheWay) {
  std::mt19937 random(11);
  int inside = 0;
  for (int round = 0; round < 60; ++round) {
    const ZoneTree tree = RandomZones(random, 1 + round % 9);
    std::vector<SearchArea> areas;
    for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) areas.push_back(SearchArea::OfZone(tree, zone));
    for (int i = 0; i < 300; ++i) {
      const auto latitude = static_cast<std::int32_t>(40 * 600000 - 2000 + random() % 120000);
      const auto longitude =
          static_cast<std::int32_t>(-75 * 600000 - 2000 + static_cast<int>(random() % 120000));
      std::vector<bool> isOnWay(tree.Count());
      const auto rule = oracles::LiteralQuery(tree, latitude / 600000.0, longitude / 600000.0);
      for (ZoneOrdinal zone = rule.deepest; zone != ZoneTree::kNone; zone = tree.At(zone).parent)
        isOnWay[zone] = true;
      for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
        EXPECT_EQ(areas[zone].Contains(latitude, longitude), isOnWay[zone]) << zone;
        inside += isOnWay[zone];
      }
    }
  }
  EXPECT_GT(inside, 500);
}

}  // namespace
}  // namespace pallomir
