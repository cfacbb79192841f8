#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <charconv>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numbers>
#include <random>

#include "base/whole_file.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/fake_zones_view.h"
#include "fakes/temporary_folder.h"
#include "gate_table.h"
#include "oracles/literal_zones.h"
#include "zones/zone_file.h"
#include "zones/zone_query.h"
#include "zones/zones.h"

// The zones' query against libraries that ask whether a polygon contains a point, the reading of a large zone
// file against the least that reading it takes, and for how long the window looks at nothing else while the
// page is told of many zones.

namespace pallomir::bench {
namespace {

using Random = std::mt19937;

unsigned Number(Random& random, unsigned below) { return static_cast<unsigned>(random() % below); }
double Share(Random& random) { return Number(random, 1 << 20) / static_cast<double>(1 << 20); }

// A star around a place: it crosses neither itself nor, by its size, its neighbours.
void AddStar(ZoneTreeBuilder& builder, int depth, ZoneVertex middle, double size, Random& random,
             unsigned corners) {
  builder.Begin(depth, {"", "Zone", "SMTWTFS", "0000", "0000"});
  for (unsigned i = 0; i < corners; ++i) {
    const double angle = 2 * std::numbers::pi * i / corners;
    const double length = size * (0.6 + 0.4 * Share(random));
    builder.Add({middle.lat + length * std::cos(angle), middle.lng + length * std::sin(angle)});
  }
}

ZoneVertex Anywhere(Random& random) {
  const double lat = 120 * Share(random) - 60;
  return {lat, 340 * Share(random) - 170};
}

constexpr double kSouth = 30, kWest = -110, kHeight = 20, kWidth = 40;  // degrees

// 320 zones of 8 to 64 corners: 8 beside each other, in each 3 with 12 in each.
const ZoneTree& QueriedZones() {
  static const ZoneTree tree = [] {
    Random random(1);
    const auto corners = [&random] { return 8 + Number(random, 57); };
    ZoneTreeBuilder builder(ZoneKind::kAlerted);
    for (int top = 0; top < 8; ++top) {
      const ZoneVertex middle{kSouth + 5 + 10 * (top / 4), kWest + 5 + 10 * (top % 4)};
      AddStar(builder, 1, middle, 4.9, random, corners());
      for (int sub = 0; sub < 3; ++sub) {
        const double turn = sub * 2 * std::numbers::pi / 3;
        const ZoneVertex within{middle.lat + 1.6 * std::cos(turn), middle.lng + 1.6 * std::sin(turn)};
        AddStar(builder, 2, within, 1.3, random, corners());
        for (int small = 0; small < 12; ++small) {
          const ZoneVertex place{within.lat - 0.45 + 0.3 * (small / 3), within.lng - 0.3 + 0.3 * (small % 3)};
          AddStar(builder, 3, place, 0.14, random, corners());
        }
      }
    }
    return builder.Build();
  }();
  return tree;
}

constexpr std::size_t kPlaces = 20'000;

const std::vector<PlanePoint>& Places() {
  static const std::vector<PlanePoint> places = [] {
    Random random(2);
    std::vector<PlanePoint> made;
    for (std::size_t i = 0; i < kPlaces; ++i) {
      const double lat = kSouth + kHeight * Share(random);
      made.push_back(ProjectToPlane(lat, kWest + kWidth * Share(random)));
    }
    return made;
  }();
  return places;
}

/// The way through the nested zones, with another's answer to whether a zone contains a place.
template <class Contains>
ZoneOrdinal DeepestBy(const Contains& contains) {
  const ZoneTree& tree = QueriedZones();
  ZoneOrdinal deepest = ZoneTree::kNone;
  ZoneOrdinal end = tree.Count();
  for (ZoneOrdinal zone = 0; zone < end;) {
    if (contains(zone)) {
      deepest = zone;
      end = tree.At(zone).subtreeEnd;
      ++zone;
    } else {
      zone = tree.At(zone).subtreeEnd;
    }
  }
  return deepest;
}

const std::vector<ZoneOrdinal>& RightAnswers() {
  static const std::vector<ZoneOrdinal> answers = [] {
    const ProjectedZoneTree zones(QueriedZones());
    std::vector<ZoneOrdinal> made;
    for (const PlanePoint& place : Places()) made.push_back(zones.AlertPosition(place).deepest);
    return made;
  }();
  return answers;
}

// Ours is the literal rule's, place by place; the others' are ours.
bool AgreesWithTheRule() {
  static const bool agrees = [] {
    const ProjectedZoneTree zones(QueriedZones());
    Random random(3);
    for (std::size_t i = 0; i < kPlaces; ++i) {
      const double lat = kSouth + kHeight * Share(random), lng = kWest + kWidth * Share(random);
      const oracles::LiteralAnswer rule = oracles::LiteralQuery(QueriedZones(), lat, lng);
      const ProjectedZoneTree::Answer answer = zones.AlertPosition(lat, lng);
      if (rule.isAlert != answer.isAlert || rule.deepest != answer.deepest) return false;
    }
    return true;
  }();
  return agrees;
}

/// Asks for all places in each round, and gives up where an answer is not ours.
template <class Deepest>
void AskForAll(benchmark::State& state, const Deepest& deepest) {
  if (!AgreesWithTheRule()) return state.SkipWithError("the rule answers otherwise");
  for (std::size_t i = 0; i < kPlaces; ++i)
    if (deepest(i) != RightAnswers()[i]) return state.SkipWithError("the answers differ");
  for ([[maybe_unused]] auto round : state) {
    for (std::size_t i = 0; i < kPlaces; ++i) benchmark::DoNotOptimize(deepest(i));
  }
}

void Query(benchmark::State& state) {
  const ProjectedZoneTree zones(QueriedZones());
  AskForAll(state, [&](std::size_t i) { return zones.AlertPosition(Places()[i]).deepest; });
}
BENCHMARK(Query)->Unit(benchmark::kMillisecond);

void QueryBoost(benchmark::State& state) {
  namespace geometry = boost::geometry;
  using Point = geometry::model::d2::point_xy<double>;
  const ZoneTree& tree = QueriedZones();
  struct Zone {
    geometry::model::box<Point> box;
    geometry::model::polygon<Point> polygon;
  };
  std::vector<Zone> zones(tree.Count());
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
    for (const ZoneVertex& vertex : tree.VerticesOf(zone)) {
      const PlanePoint at = ProjectToPlane(vertex.lat, vertex.lng);
      geometry::append(zones[zone].polygon, Point(at.x, at.y));
    }
    geometry::correct(zones[zone].polygon);
    geometry::envelope(zones[zone].polygon, zones[zone].box);
  }
  AskForAll(state, [&](std::size_t i) {
    const Point place(Places()[i].x, Places()[i].y);
    return DeepestBy([&](ZoneOrdinal zone) {
      return geometry::within(place, zones[zone].box) && geometry::within(place, zones[zone].polygon);
    });
  });
}
BENCHMARK(QueryBoost)->Unit(benchmark::kMillisecond);

/// Its polygons prepared, the places made before they are asked for.
class GeosZones {
 public:
  GeosZones() : geos_(GEOS_init_r()) {
    const ZoneTree& tree = QueriedZones();
    for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
      std::vector<PlanePoint> ring;
      for (const ZoneVertex& vertex : tree.VerticesOf(zone))
        ring.push_back(ProjectToPlane(vertex.lat, vertex.lng));
      ring.push_back(ring.front());
      polygons_.push_back(
          GEOSGeom_createPolygon_r(geos_, GEOSGeom_createLinearRing_r(geos_, Sequence(ring)), nullptr, 0));
      prepared_.push_back(GEOSPrepare_r(geos_, polygons_.back()));
    }
    for (const PlanePoint& place : Places())
      places_.push_back(GEOSGeom_createPointFromXY_r(geos_, place.x, place.y));
  }
  ~GeosZones() {
    for (const GEOSPreparedGeometry* zone : prepared_) GEOSPreparedGeom_destroy_r(geos_, zone);
    for (GEOSGeometry* polygon : polygons_) GEOSGeom_destroy_r(geos_, polygon);
    for (GEOSGeometry* place : places_) GEOSGeom_destroy_r(geos_, place);
    GEOS_finish_r(geos_);
  }
  GeosZones(const GeosZones&) = delete;
  GeosZones& operator=(const GeosZones&) = delete;

  ZoneOrdinal DeepestAt(std::size_t place) const {
    return DeepestBy([&](ZoneOrdinal zone) {
      return GEOSPreparedContains_r(geos_, prepared_[zone], places_[place]) == 1;
    });
  }

 private:
  GEOSCoordSequence* Sequence(const std::vector<PlanePoint>& points) const {
    GEOSCoordSequence* sequence = GEOSCoordSeq_create_r(geos_, static_cast<unsigned>(points.size()), 2);
    for (unsigned i = 0; i < points.size(); ++i)
      GEOSCoordSeq_setXY_r(geos_, sequence, i, points[i].x, points[i].y);
    return sequence;
  }

  GEOSContextHandle_t geos_;
  std::vector<GEOSGeometry*> polygons_;
  std::vector<const GEOSPreparedGeometry*> prepared_;
  std::vector<GEOSGeometry*> places_;
};

void QueryGeos(benchmark::State& state) {
  const GeosZones zones;
  AskForAll(state, [&](std::size_t i) { return zones.DeepestAt(i); });
}
BENCHMARK(QueryGeos)->Unit(benchmark::kMillisecond);

const GateRow againstBoost({"query in 320 zones against Boost.Geometry", "Query", "QueryBoost", 2, 3.6});
const GateRow againstGeos({"query in 320 zones against prepared GEOS", "Query", "QueryGeos", 2.5, 4.9});

/// A file of 10,000 zones with 50 corners each.
class LargeFile {
 public:
  LargeFile() {
    Random random(4);
    ZoneTreeBuilder builder(ZoneKind::kAlerted);
    for (int zone = 0; zone < 10'000; ++zone) {
      AddStar(builder, 1 + zone % 3, Anywhere(random), 0.01, random, 50);
    }
    fakes::WriteFile(Path(), WriteZones(builder.Build()));
  }
  std::filesystem::path Path() const { return folder_.Path() / "ZoneMenus.txt"; }

 private:
  fakes::TemporaryFolder folder_;
};

const LargeFile& TheLargeFile() {
  static const LargeFile file;
  return file;
}

std::string ReadLargeFile() {
  std::error_code error;
  return ReadWholeFile(TheLargeFile().Path(), kMaxZoneFileSize, error).value_or("");
}

void Load(benchmark::State& state) {
  if (WriteZones(ReadZones(ReadLargeFile()).tree) != ReadLargeFile())
    return state.SkipWithError("what is read is not what was written");
  for ([[maybe_unused]] auto round : state) benchmark::DoNotOptimize(ReadZones(ReadLargeFile()).tree.Count());
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

// The least that it takes: the bytes, and every coordinate where it is known to stand.
void ReadAndFromChars(benchmark::State& state) {
  const std::string file = ReadLargeFile();
  std::vector<std::size_t> numbers;
  for (std::size_t line = 0; (line = file.find('\n', line)) != file.npos && ++line < file.size();) {
    const std::size_t comma = line + 1;
    if (file[comma] != ',' || file.find('"', line) < file.find('\n', line)) continue;
    numbers.push_back(comma + 1);
    numbers.push_back(file.find(',', comma + 1) + 1);
  }
  if (numbers.size() != 2 * 10'000 * 50) return state.SkipWithError("the numbers were not found");
  std::vector<double> values(numbers.size());
  for ([[maybe_unused]] auto round : state) {
    const std::string bytes = ReadLargeFile();
    for (std::size_t i = 0; i < numbers.size(); ++i)
      std::from_chars(bytes.data() + numbers[i], bytes.data() + bytes.size(), values[i]);
    benchmark::DoNotOptimize(values.data());
  }
}
BENCHMARK(ReadAndFromChars)->Unit(benchmark::kMillisecond);

const GateRow loading({"10,000 zones of 50 corners read", "Load", "ReadAndFromChars", 0.4, 0.6});

/// Notes how long the longest event took.
class TimedLoop : public fakes::FakeEventLoop {
 public:
  std::unique_ptr<Timer> CreateTimer(const std::string& name, int milliseconds,
                                     std::function<void()> tick) override {
    return FakeEventLoop::CreateTimer(name, milliseconds, [this, tick = std::move(tick)] { Time(tick); });
  }
  void Time(const std::function<void()>& event) {
    const auto begin = std::chrono::steady_clock::now();
    event();
    longest = std::max(longest, std::chrono::steady_clock::now() - begin);
  }

  std::chrono::steady_clock::duration longest{0};
};

// A page that reports ready, 1,000 zones of 50 corners in the file; what is written into the page is copied.
double LongestSliceOfStatus99() {
  fakes::TemporaryFolder folder;
  Random random(5);
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  for (int zone = 0; zone < 1000; ++zone) AddStar(builder, 1 + zone % 3, Anywhere(random), 0.01, random, 50);
  fakes::WriteFile(folder.Path() / "ZoneMenus.txt", WriteZones(builder.Build()));
  TimedLoop loop;
  fakes::FakeQuestionBox box;
  QuestionQueue questions(box);
  fakes::FakeZonesView view;
  Trace trace([] { return 0.0; }, [](const std::string&) {});
  std::vector<std::string> written;
  Zones zones(view, loop, questions, trace, folder.Path() / "ZoneMenus.txt",
              {[&](const char*, const std::string& text) { written.push_back(text); }, [] {}, {}, {}, {}});
  loop.Time([&] { zones.OnPageReady(); });
  loop.Advance(0);
  constexpr std::size_t kWrites = 1 + 1000 + 5;
  if (written.size() != kWrites) return 1e9;
  return std::chrono::duration<double, std::milli>(loop.longest).count();
}

const FigureRow slices("longest slice of status 99 with 1,000 zones, ms", LongestSliceOfStatus99, 50);

}  // namespace
}  // namespace pallomir::bench
