#include "zones/zone_query.h"

#include <gtest/gtest.h>

#include "oracles/literal_zones.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

void ExpectSame(const ProjectedZoneTree& projected, const ZoneTree& tree, double lat, double lng) {
  const oracles::LiteralAnswer expected = oracles::LiteralQuery(tree, lat, lng);
  const ProjectedZoneTree::Answer answer = projected.AlertPosition(lat, lng);
  EXPECT_EQ(answer.isAlert, expected.isAlert) << lat << ' ' << lng;
  EXPECT_EQ(answer.deepest, expected.deepest) << lat << ' ' << lng;
}

// Places on corners, on edges, beside them by the last digits, and anywhere.
TEST(ZoneQuery, AgreesWithTheRuleOnRandomTrees) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> share(-0.02, 0.22);
  for (int round = 0; round < 60; ++round) {
    const ZoneTree tree = RandomZones(random, 1 + static_cast<int>(random() % 30));
    const ProjectedZoneTree projected(tree);
    for (int i = 0; i < 200; ++i) ExpectSame(projected, tree, 40 + share(random), -75 + share(random));
    for (int lat = 0; lat <= 24; ++lat) {
      for (int lng = 0; lng <= 24; ++lng) {
        const double at = 40 + lat / 128.0, beside = -75 + lng / 128.0;
        ExpectSame(projected, tree, at, beside);
        ExpectSame(projected, tree, at + 1e-14, beside - 1e-14);
      }
    }
  }
}

TEST(ZoneQuery, SmallZonesFarApart) {
  ZoneTreeBuilder builder(ZoneKind::kNonAlert);
  builder.Append(1, {"", "bay"}, Square(40, -75, 1e-5));
  builder.Append(1, {"", "line"}, std::vector<ZoneVertex>{{10, 20}, {12, 20}});
  builder.Append(1, {"", "world"}, std::vector<ZoneVertex>{{-85, -180}, {-85, 180}, {85, 180}, {85, -180}});
  builder.Append(2, {"", "dot"}, std::vector<ZoneVertex>{{1, 1}});
  builder.Append(2, {"", "speck"}, Square(50, 10, 1e-9));
  const ZoneTree tree = builder.Build();
  const ProjectedZoneTree projected(tree);
  const std::pair<double, double> places[] = {{40.000005, -74.999995},
                                              {40, -75},
                                              {40.00001, -75},
                                              {39.99999, -75},
                                              {11, 20},
                                              {1, 1},
                                              {50.0000000005, 10.0000000005},
                                              {50.0000000005, 10.0000000015},
                                              {0, 0},
                                              {86, 0},
                                              {-86, 180}};
  for (const auto& [lat, lng] : places) ExpectSame(projected, tree, lat, lng);
}

TEST(ZoneQuery, FollowsTheFirstOfOverlappingSiblings) {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  builder.Append(1, {"", "first"}, Square(40, -75, 1));
  builder.Append(2, {"", "within"}, Square(40.5, -74.5, 0.25));
  builder.Append(1, {"", "second"}, Square(40.4, -74.6, 1));
  const ProjectedZoneTree zones(builder.Build());
  using Answer = ProjectedZoneTree::Answer;
  EXPECT_EQ(zones.AlertPosition(40.45, -74.55), (Answer{true, 0}));
  EXPECT_EQ(zones.AlertPosition(40.6, -74.4), (Answer{false, 1}));
  EXPECT_EQ(zones.AlertPosition(41.2, -73.9), (Answer{true, 2}));
  EXPECT_EQ(zones.AlertPosition(39, -75), (Answer{false, ZoneTree::kNone}));
}

TEST(ZoneQuery, WhereThereIsNoProjectionOrNoZone) {
  for (const ZoneKind kind : {ZoneKind::kAlerted, ZoneKind::kNonAlert}) {
    const ProjectedZoneTree none(ZoneTreeBuilder(kind).Build());
    EXPECT_EQ(none.AlertPosition(40, -75).isAlert, kind == ZoneKind::kNonAlert);
    ZoneTreeBuilder builder(kind);
    builder.Append(1, {}, std::vector<ZoneVertex>{{-90, -180}, {-90, 180}, {90, 180}, {90, -180}});
    const ProjectedZoneTree polar(builder.Build());
    EXPECT_EQ(polar.AlertPosition(-90, 0).deepest, ZoneTree::kNone);
    EXPECT_EQ(polar.AlertPosition(91, 0).isAlert, kind == ZoneKind::kNonAlert);
  }
}

}  // namespace
}  // namespace pallomir
