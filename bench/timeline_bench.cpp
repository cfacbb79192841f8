#include <benchmark/benchmark.h>

#include "timeline/strip_images_widget.h"

// One redraw of the timeline: the scale, the strips of ten units and their images.

namespace pallomir {
namespace {

constexpr int kUnits = 10;
constexpr int kPointsPerUnit = 100'000;
constexpr int kRowHeight = 8;
constexpr int kTimeHeight = 10;

// One point every ten seconds for eleven and a half days.
std::vector<DataPoint> Track(Millis start) {
  std::vector<DataPoint> points(kPointsPerUnit);
  for (DataPoint& point : points) {
    point.time = *EncodePackedTime(start);
    start += 10 * kSecond;
  }
  return points;
}

void TimelineRedraw(benchmark::State& state) {
  const Millis start = ToMillis({2026, 11, 1});
  const TimeWindow window{start, start + state.range(0) * kDay};
  const auto width = static_cast<int>(state.range(1));
  const auto pixelRatio = static_cast<double>(state.range(2)) / 100;
  std::vector<std::vector<DataPoint>> tracks;
  std::vector<TimelineUnit> units;
  for (int k = 0; k < kUnits; ++k) tracks.push_back(Track(start + k * kMinute));
  for (const auto& track : tracks) units.push_back({"Unit", 0, track});
  for (auto _ : state) {
    const TimelinePicture picture = DrawTimeline(window, 300, width, units);
    benchmark::DoNotOptimize(TimeScaleImage(picture, kTimeHeight, pixelRatio));
    for (std::size_t row = 0; row < picture.rows.size(); ++row)
      benchmark::DoNotOptimize(DataStripImage(picture, row, kRowHeight, pixelRatio));
  }
}

BENCHMARK(TimelineRedraw)
    ->ArgNames({"days", "width", "percent"})
    ->Args({12, 1000, 100})
    ->Args({1, 1000, 100})
    ->Args({12, 4000, 100})
    ->Args({12, 4000, 200})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pallomir
