#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/temporary_folder.h"
#include "gate_table.h"
#include "journal/journal.h"
#include "journal/journal_list.h"
#include "journal/sqlite_journal.h"
#include "map/projection.h"

// Who entered and left which zone: found in the points against as many single queries, noted as a batch
// comes, and read where there is much of it. That what is found is right is told by the tests.

namespace pallomir::bench {
namespace {

using Random = std::mt19937;
constexpr std::size_t kUnits = 12;
constexpr std::size_t kPoints = 1'000'000;
const Millis kStart = ToMillis({2026, 11, 1});

double Share(Random& random) { return static_cast<double>(random() % (1 << 20)) / (1 << 20); }

void AddStar(ZoneTreeBuilder& builder, int depth, double lat, double lng, double size, Random& random) {
  builder.Begin(depth, {"", "Zone " + std::to_string(random())});
  const auto corners = static_cast<unsigned>(8 + random() % 57);
  for (unsigned i = 0; i < corners; ++i) {
    const double angle = 2 * std::numbers::pi * i / corners, length = size * (0.6 + 0.4 * Share(random));
    builder.Add({lat + length * std::cos(angle), lng + length * std::sin(angle)});
  }
}

// 320 zones over a city: 8 quarters of some 10 km, in each 3 of 3 km with 12 of 300 m in each.
ZoneTree CityZones() {
  Random random(1);
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  for (int top = 0; top < 8; ++top) {
    const double lat = 40.1 + 0.2 * (top / 4), lng = -75.9 + 0.2 * (top % 4);
    AddStar(builder, 1, lat, lng, 0.098, random);
    for (int sub = 0; sub < 3; ++sub) {
      const double turn = sub * 2 * std::numbers::pi / 3;
      const double within = lat + 0.032 * std::cos(turn), beside = lng + 0.032 * std::sin(turn);
      AddStar(builder, 2, within, beside, 0.026, random);
      for (int small = 0; small < 12; ++small)
        AddStar(builder, 3, within - 0.009 + 0.006 * (small / 3), beside - 0.006 + 0.006 * (small % 3),
                0.0028, random);
    }
  }
  return builder.Build();
}

// Vehicles that drive about the city, a report a second, some 20 m apart.
PointStore Drive() {
  PointStore store;
  store.Reset(kUnits);
  for (std::size_t k = 1; k <= kUnits; ++k) {
    Random random(static_cast<unsigned>(k));
    std::vector<DataPoint> rows;
    double lat = 40 + 0.4 * Share(random), lng = -76 + 0.8 * Share(random), heading = 0;
    for (std::size_t i = 0; i < kPoints / kUnits; ++i) {
      heading += 0.2 * (Share(random) - 0.5);
      lat += 0.00018 * std::cos(heading);
      lng += 0.00024 * std::sin(heading);
      if (lat < 40 || lat > 40.4 || lng < -76 || lng > -75.2) heading += std::numbers::pi;
      lat = std::clamp(lat, 40.0, 40.4);
      lng = std::clamp(lng, -76.0, -75.2);
      rows.push_back({*EncodePackedTime(kStart + static_cast<Millis>(i) * kSecond),
                      LngToWorldX(DegreesToPositionUnits(lng)), LatToWorldY(DegreesToPositionUnits(lat)), 0});
    }
    store.Merge(k, rows);
  }
  return store;
}

const PointStore& Points() {
  static const PointStore store = Drive();
  return store;
}

void Events(benchmark::State& state) {
  const fakes::FakeClock system;
  const LocalClock clock(system);
  CrossingFinder finder(Points(), clock, {});
  finder.SetZones(CityZones());
  for (auto _ : state) {
    finder.Forget();
    for (std::size_t k = 1; k <= kUnits; ++k)
      finder.PointsCame(k, WithoutFlag(Points().Track(k).Points().front().time));
    std::size_t count = 0;
    while (const auto found = finder.Work(20'000)) count += found->stretch.counting.size();
    if (count < 1000) std::abort();
  }
}
BENCHMARK(Events)->Unit(benchmark::kMillisecond);

void SingleQueries(benchmark::State& state) {
  const ProjectedZoneTree zones(CityZones());
  std::vector<ZoneVertex> places;
  for (std::size_t k = 1; k <= kUnits; ++k) {
    for (const DataPoint& point : Points().Track(k).Points())
      places.push_back({WorldYToLat(point.y), WorldXToLng(point.x)});
  }
  for (auto _ : state) {
    for (const auto& [lat, lng] : places) benchmark::DoNotOptimize(zones.AlertPosition(lat, lng));
  }
}
BENCHMARK(SingleQueries)->Unit(benchmark::kMillisecond);

const GateRow events({"events of 1 M points in 320 zones against single queries", "Events", "SingleQueries",
                      2, 5});

double MillisecondsOf(const auto& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// 100 points of a unit that drives on through many zones, behind the 1 M points; the longest of 20 batches,
// until their rows are read from the journal.
double LiveBatch() {
  fakes::TemporaryFolder folder;
  fakes::FakeEventLoop loop;
  const fakes::FakeClock system;
  const LocalClock clock(system);
  SqliteJournal store;
  store.Open(folder.Path() / "Journal.db");
  PointStore points = Drive();
  const UnitBook book = EnumerateUnits(std::vector<MobileUnit>(1, {true, "0123456789AB", "Van"}));
  Journal journal(store, loop, system, clock, points, book, {}, {[] {}, [](const JournalEntry&) {}});
  journal.SetZones(CityZones());
  double longest = 0;
  DataPoint at = points.Track(1).Points().back();
  for (int batch = 0; batch < 20; ++batch) {
    std::vector<DataPoint> rows;
    for (int i = 0; i < 100; ++i) {
      const Millis utc = *DecodePackedTime(at.time) + kMinute;
      at = {*EncodePackedTime(utc), LngToWorldX(DegreesToPositionUnits(-75.9 + 0.006 * i)),
            LatToWorldY(DegreesToPositionUnits(40.1 + 0.01 * batch)), 0};
      rows.push_back(at);
    }
    points.Merge(1, rows);
    MergedBatch merged;
    merged.earliest = {{1, WithoutFlag(rows.front().time)}};
    const double took = MillisecondsOf([&] {
      journal.OnBatch(merged);
      if (journal.IsWorking() || store.Rows({}, 0, 50).empty()) std::abort();
    });
    longest = std::max(longest, took);
  }
  return longest;
}

const FigureRow live("a live batch of 100 points until its rows are read, ms (goal 20)", LiveBatch, 100);

void FillJournal(SqliteJournal& store) {
  Random random(1);
  for (std::size_t unit = 0; unit < kUnits; ++unit) {
    const std::string id = "Unit " + std::to_string(unit);
    for (std::size_t from = 0; from < kPoints / kUnits; from += 5000) {
      std::vector<JournalEntry> entries(5000);
      for (std::size_t i = 0; i < entries.size(); ++i) {
        JournalEntry& entry = entries[i];
        entry.utc = kStart + static_cast<Millis>((from + i) * 30 + unit) * kSecond;
        entry.zone = "Zone " + std::to_string(random() % 320);
        entry.hasEntered = i % 2 == 0;
        entry.isAlert = random() % 10 == 0;
      }
      store.Replace(
          {id, id, entries.front().utc, entries.back().utc, [](const std::string&) { return true; }},
          entries);
    }
  }
}

// The longest of: open, each filter with its first page, each page on the way down.
double LargeJournal() {
  fakes::TemporaryFolder folder;
  {
    SqliteJournal store;
    store.Open(folder.Path() / "Journal.db");
    FillJournal(store);
  }
  const fakes::FakeClock system;
  const LocalClock clock(system);
  SqliteJournal store;
  JournalList list(store, clock);
  double longest = MillisecondsOf([&] {
    store.Open(folder.Path() / "Journal.db");
    list.Refresh();
    list.At(0);
  });
  for (const JournalFilter& filter : {JournalFilter{},
                                      {"Unit 7", "", false},
                                      {"", "Zone 7", false},
                                      {"", "", true},
                                      {"Unit 7", "", true},
                                      {"", "Zone 7", true},
                                      {"Unit 7", "Zone 7", true}}) {
    longest = std::max(longest, MillisecondsOf([&] {
                         list.SetFilter(filter);
                         list.Refresh();
                         list.At(0);
                       }));
    for (std::size_t row = 0; row < list.Count(); row += list.Count() / 7 + 1)
      longest = std::max(longest, MillisecondsOf([&] { list.At(row); }));
    longest = std::max(longest, MillisecondsOf([&] { list.At(list.Count() - 1); }));
  }
  return longest;
}

const FigureRow large("journal of 1 M events: open, filter, scroll, the longest, ms (goal 100)", LargeJournal,
                      300);

}  // namespace
}  // namespace pallomir::bench
