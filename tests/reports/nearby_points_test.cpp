#include "reports/nearby_points.h"

#include <gmock/gmock.h>

#include <random>

#include "oracles/literal_nearby.h"

namespace pallomir {
namespace {

using Track = std::vector<DataPoint>;

std::vector<NearbyPoint> Find(const std::vector<Track>& tracks, WorldPoint place, std::int32_t unitsPerPixel,
                              NearbyPoints& nearby) {
  const std::vector<std::span<const DataPoint>> spans(tracks.begin(), tracks.end());
  const auto found = nearby.Find(spans, place, unitsPerPixel);
  EXPECT_EQ(found, unitsPerPixel == 0 ? std::vector<NearbyPoint>()
                                      : oracles::LiteralNearby(spans, place, unitsPerPixel));
  return found;
}

// Ways with stops, steps of all sizes, and jumps to the limits of what a position can be.
std::vector<Track> RandomTracks(std::mt19937& random) {
  std::vector<Track> tracks(1 + random() % 3);
  for (Track& track : tracks) {
    const std::size_t size = random() % 2 ? random() % 12000 : random() % 200;
    DataPoint at{0, 1 << 29, 1 << 29, 0};
    const int steps = 1 << random() % 20;
    for (std::size_t j = 0; j < size; ++j) {
      if (random() % 1000 == 0) at = {0, random() % 2 ? INT32_MAX : INT32_MIN, 1 << 29, 0};
      if (random() % 1000 == 0) at = {0, 1 << 29, 1 << 29, 0};
      track.push_back(at);
      if (random() % 4 == 0) continue;
      for (std::int32_t* axis : {&at.x, &at.y})
        *axis =
            static_cast<std::int32_t>(*axis + (static_cast<std::int64_t>(random()) % (2 * steps)) - steps);
    }
  }
  return tracks;
}

TEST(NearbyPoints, AreWhatTheRuleFindsOnAnyWay) {
  std::mt19937 random(15);
  std::size_t full = 0, partly = 0;
  NearbyPoints nearby;
  for (int round = 0; round < 60; ++round) {
    nearby.Forget();
    const auto tracks = RandomTracks(random);
    for (int question = 0; question < 12; ++question) {
      const Track& track = tracks[random() % tracks.size()];
      WorldPoint place{1 << 29, 1 << 29};
      if (!track.empty() && question > 0) {
        const DataPoint& near = track[random() % track.size()];
        place = {near.x / 2 * 2, near.y / 2 * 2};
      }
      const auto found = Find(tracks, place, 1 << random() % 23, nearby);
      ++(found.size() == kMostNearby ? full : partly);
    }
  }
  EXPECT_GT(full, 100u);
  EXPECT_GT(partly, 100u);
}

TEST(NearbyPoints, LieLessThanFiftyPixelsAway) {
  const struct {
    WorldPoint at;
    std::int32_t scale;
    bool isNear;
  } cases[] = {{{4999, 0}, 100, true},     {{5000, 0}, 100, false},     {{0, -4999}, 100, true},
               {{0, -5000}, 100, false},   {{-3000, 4000}, 100, false}, {{-3000, 3999}, 100, true},
               {{INT32_MAX, 0}, 1, false}, {{0, 0}, 0, false}};
  for (const auto& [at, scale, isNear] : cases) {
    NearbyPoints nearby;
    EXPECT_EQ(Find({{{0, at.x, at.y, 0}}}, {0, 0}, scale, nearby).size(), isNear ? 1u : 0u)
        << at.x << ' ' << at.y;
  }
}

TEST(NearbyPoints, OfEqualDistancesTheFirstUnitsComeFirst) {
  NearbyPoints nearby;
  std::vector<Track> tracks(3);
  for (std::int32_t j = 0; j < 4; ++j) {
    tracks[0].push_back({0, 10 - j, 0, 0});
    tracks[1].push_back({0, 0, 10 - j, 0});
    tracks[2].push_back({0, -8, 0, 0});
  }
  const auto found = Find(tracks, {0, 0}, 1, nearby);
  std::string order;
  for (const NearbyPoint& point : found) order += std::to_string(point.k) + std::to_string(point.index) + ' ';
  EXPECT_EQ(order, "13 23 12 22 30 31 32 33 11 21 ") << "and the two farthest of twelve are left out";
  tracks[0].push_back({0, 0, 0, 0});
  nearby.Forget();
  EXPECT_EQ(Find(tracks, {0, 0}, 1, nearby).front(), (NearbyPoint{1, 4, 0}));
}

}  // namespace
}  // namespace pallomir
