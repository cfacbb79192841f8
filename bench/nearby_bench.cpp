#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <nanoflann.hpp>
#include <numbers>
#include <random>
#include <vector>

#include "gate_table.h"
#include "oracles/literal_nearby.h"
#include "reports/nearby_points.h"

// The points near a place, of a million of four units, against the rule and against a k-d tree.

namespace pallomir::bench {
namespace {

constexpr std::size_t kUnits = 4;
constexpr std::size_t kPointsOfUnit = 250'000;
constexpr std::size_t kQuestions = 10;

struct Question {
  WorldPoint place;
  std::int32_t unitsPerPixel = 1;
};

// Drives through a region of some sixty kilometres, a point every few seconds, with stops.
struct Points {
  Points() {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> share(0, 1);
    constexpr double kMiddle = 1 << 29, kReach = 1 << 20, kStep = 1800;
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
      std::vector<DataPoint> track;
      double x = kMiddle, y = kMiddle, heading = 0;
      bool stands = false;
      for (std::size_t j = 0; j < kPointsOfUnit; ++j) {
        if (random() % 100 == 0) stands = !stands;
        heading += share(random) - 0.5;
        if (std::hypot(x - kMiddle, y - kMiddle) > kReach) heading = std::atan2(kMiddle - y, kMiddle - x);
        const double step = stands ? 3 : kStep * share(random);
        x += step * std::cos(heading);
        y += step * std::sin(heading);
        track.push_back(
            {static_cast<std::uint32_t>(j), static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), 0});
      }
      tracks.push_back(std::move(track));
    }
    spans.assign(tracks.begin(), tracks.end());
    for (std::size_t i = 0; i < kQuestions; ++i) {
      const DataPoint& near = tracks[random() % kUnits][random() % kPointsOfUnit];
      const int zoom = 10 + static_cast<int>(i);
      questions.push_back({{near.x + 20, near.y - 30}, 1 << (22 - zoom)});
    }
    NearbyPoints nearby;
    for (const Question& asked : questions) {
      if (nearby.Find(spans, asked.place, asked.unitsPerPixel) ==
          oracles::LiteralNearby(spans, asked.place, asked.unitsPerPixel))
        continue;
      std::fputs("the answers differ from the rule's\n", stderr);
      std::exit(1);
    }
  }

  std::vector<std::vector<DataPoint>> tracks;
  std::vector<std::span<const DataPoint>> spans;
  std::vector<Question> questions;
};

const Points& ThePoints() {
  static const Points points;
  return points;
}

template <class Ask>
void AskAll(benchmark::State& state, Ask ask) {
  const Points& points = ThePoints();
  for (auto _ : state) {
    for (const Question& question : points.questions) benchmark::DoNotOptimize(ask(points.spans, question));
  }
}

void Nearby(benchmark::State& state) {
  NearbyPoints nearby;
  AskAll(state, [&](auto& spans, const Question& question) {
    return nearby.Find(spans, question.place, question.unitsPerPixel);
  });
}
BENCHMARK(Nearby);

void NearbyByTheRule(benchmark::State& state) {
  AskAll(state, [](auto& spans, const Question& question) {
    return oracles::LiteralNearby(spans, question.place, question.unitsPerPixel);
  });
}
BENCHMARK(NearbyByTheRule);

void NearbyWithItsBoxes(benchmark::State& state) {
  const Points& points = ThePoints();
  for (auto _ : state) {
    NearbyPoints nearby;
    for (const Question& question : points.questions)
      benchmark::DoNotOptimize(nearby.Find(points.spans, question.place, question.unitsPerPixel));
  }
}
BENCHMARK(NearbyWithItsBoxes);

// All points as the library wants to see them.
struct Cloud {
  std::size_t kdtree_get_point_count() const { return kUnits * kPointsOfUnit; }
  double kdtree_get_pt(std::size_t index, std::size_t axis) const {
    const DataPoint& point = ThePoints().tracks[index / kPointsOfUnit][index % kPointsOfUnit];
    return axis == 0 ? point.x : point.y;
  }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 2>;

void NanoflannWithItsTree(benchmark::State& state) {
  const Points& points = ThePoints();
  const Cloud cloud;
  for (auto _ : state) {
    Tree tree(2, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(32));
    tree.buildIndex();
    for (const Question& question : points.questions) {
      std::size_t indexes[kMostNearby] = {};
      double distances[kMostNearby] = {};
      nanoflann::KNNResultSet<double> found(kMostNearby);
      found.init(indexes, distances);
      const double place[] = {static_cast<double>(question.place.x), static_cast<double>(question.place.y)};
      tree.findNeighbors(found, place, nanoflann::SearchParams());
      benchmark::DoNotOptimize(distances);
    }
  }
}
BENCHMARK(NanoflannWithItsTree)->Unit(benchmark::kMillisecond);

const GateRow againstRule({"nearby over 1 M points, ten questions", "Nearby", "NearbyByTheRule", 50, 100});
const GateRow againstTree({"nearby over 1 M points, ten questions and their preparation",
                           "NearbyWithItsBoxes", "NanoflannWithItsTree", 0.5, 1 / 1.2});

}  // namespace
}  // namespace pallomir::bench
