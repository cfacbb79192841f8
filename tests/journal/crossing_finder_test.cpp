#include "journal/crossing_finder.h"

#include <gtest/gtest.h>

#include <cmath>

#include "fakes/fake_system.h"
#include "zones/zone_query.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

const Millis kNoon = ToMillis({2026, 11, 23, 12});  // a Monday
constexpr FlickerLimits kNoFlicker{-1, 0};

DataPoint Point(Millis utc, double lat, double lng) {
  return {*EncodePackedTime(utc), LngToWorldX(DegreesToPositionUnits(lng)),
          LatToWorldY(DegreesToPositionUnits(lat)), 0};
}

// One unit, its points, and a journal of what was found.
struct Found {
  explicit Found(FlickerLimits limits = kNoFlicker) : finder(points, clock, limits) { points.Reset(1); }

  void Add(std::vector<DataPoint> rows) {
    points.Merge(1, rows);
    finder.PointsCame(1, rows.front().time);
    Work();
  }
  void Work(std::size_t mostPoints = 1000) {
    while (finder.HasWork()) {
      const auto found = finder.Work(mostPoints);
      ASSERT_TRUE(found);
      std::erase_if(journal, [&](const ZoneCrossing& known) {
        return known.utc >= found->stretch.from && known.utc <= found->stretch.until;
      });
      journal.insert(journal.end(), found->stretch.counting.begin(), found->stretch.counting.end());
    }
    std::ranges::stable_sort(journal, {}, &ZoneCrossing::utc);
  }
  // "12:00:30 in1! out0~": zone ordinals; ! an alert, ~ late.
  std::string Text() const {
    std::string text;
    Millis last = 0;
    for (const ZoneCrossing& crossing : journal) {
      if (crossing.utc != last) text += (text.empty() ? "" : " ") + IsoText(crossing.utc).substr(11);
      last = crossing.utc;
      text += (crossing.hasEntered ? " in" : " out") + std::to_string(crossing.zone) +
              (crossing.isAlert ? "!" : "") + (crossing.isLate ? "~" : "");
    }
    return text;
  }

  fakes::FakeClock system;
  LocalClock clock{system};
  PointStore points;
  CrossingFinder finder;
  std::vector<ZoneCrossing> journal;
};

// A square around 40, -75 within another one, and a third beside it.
ZoneTree Nested(ZoneKind kind = ZoneKind::kAlerted) {
  ZoneTreeBuilder builder(kind);
  builder.Append(1, {"", "yard"}, Square(40, -75, 0.04));
  builder.Append(2, {"", "bay"}, Square(40.01, -74.99, 0.02));
  builder.Append(1, {"", "street"}, Square(40, -74.96, 0.04));
  return builder.Build();
}

std::vector<DataPoint> Walk(std::mt19937& random, int count) {
  std::uniform_real_distribution<double> share(0, 1);
  double lat = 40 + share(random) / 5, lng = -75 + share(random) / 5;
  Millis utc = kNoon;
  std::vector<DataPoint> rows;
  for (int i = 0; i < count; ++i) {
    const double stride = random() % 4 == 0 ? 0.1 : 0.005;
    lat = std::clamp(lat + stride * (share(random) - 0.5), 39.95, 40.25);
    lng = std::clamp(lng + stride * (share(random) - 0.5), -75.05, -74.75);
    rows.push_back(Point(utc, lat, lng));
    utc += static_cast<Millis>(1 + random() % 120) * kSecond;
  }
  return rows;
}

using Passage = std::tuple<Millis, ZoneOrdinal, bool, bool>;  // when, zone, whether into it, whether an alert

std::vector<Passage> Plain(const std::vector<ZoneCrossing>& crossings) {
  std::vector<Passage> plain;
  for (const ZoneCrossing& crossing : crossings)
    plain.emplace_back(crossing.utc, crossing.zone, crossing.hasEntered, crossing.isAlert);
  return plain;
}

std::vector<ZoneOrdinal> PathTo(const ZoneTree& zones, ZoneOrdinal zone) {
  std::vector<ZoneOrdinal> path;
  for (; zone != ZoneTree::kNone; zone = zones.At(zone).parent) path.insert(path.begin(), zone);
  return path;
}

// The shares of the way from a to b at which it meets an edge, its ends among them.
std::vector<double> CutsOf(const ZoneTree& zones, PlanePoint a, PlanePoint b) {
  std::vector<double> cuts{0, 1};
  for (ZoneOrdinal zone = 0; zone < zones.Count(); ++zone) {
    const auto corners = zones.VerticesOf(zone);
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const ZoneVertex &corner = corners[i], &next = corners[(i + 1) % corners.size()];
      const PlanePoint from = ProjectToPlane(corner.lat, corner.lng), to = ProjectToPlane(next.lat, next.lng);
      const double ex = to.x - from.x, ey = to.y - from.y;
      const double turn = (b.x - a.x) * ey - (b.y - a.y) * ex;
      const double share = ((from.x - a.x) * ey - (from.y - a.y) * ex) / turn;
      if (turn != 0 && share > 0 && share < 1) cuts.push_back(share);
    }
  }
  std::ranges::sort(cuts);
  return cuts;
}

// The rule written down: each way is cut by every edge of every zone, and each piece asked for by its middle.
std::vector<Passage> Literal(const ZoneTree& zones, std::span<const DataPoint> rows) {
  const ProjectedZoneTree projected(zones);
  const auto placeOf = [](const DataPoint& row) {
    return PlanePoint{row.x / kWorldSize, row.y / kWorldSize};
  };
  std::vector<Passage> passages;
  ZoneOrdinal zone = projected.AlertPosition(placeOf(rows[0])).deepest;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const PlanePoint a = placeOf(rows[i - 1]), b = placeOf(rows[i]);
    const Millis start = *DecodePackedTime(rows[i - 1].time), end = *DecodePackedTime(rows[i].time);
    const auto cuts = CutsOf(zones, a, b);
    for (std::size_t c = 1; c < cuts.size(); ++c) {
      if ((cuts[c] - cuts[c - 1]) * std::hypot(b.x - a.x, b.y - a.y) < 1e-10) continue;
      const double middle = (cuts[c - 1] + cuts[c]) / 2;
      const auto answer = projected.AlertPosition({a.x + middle * (b.x - a.x), a.y + middle * (b.y - a.y)});
      if (answer.deepest == zone) continue;
      const auto before = PathTo(zones, zone), after = PathTo(zones, answer.deepest);
      const Millis utc = start + std::llround(cuts[c - 1] * static_cast<double>(end - start));
      const auto [left, entered] = std::ranges::mismatch(before, after);
      for (auto n = before.end(); n != left;) passages.emplace_back(utc, *--n, false, false);
      for (auto n = entered; n != after.end(); ++n) passages.emplace_back(utc, *n, true, false);
      std::get<3>(passages.back()) = answer.isAlert;
      zone = answer.deepest;
    }
  }
  return passages;
}

ZoneTree WithoutSchedules(const ZoneTree& zones) {
  ZoneTreeBuilder builder(zones.TopLevelKind());
  for (ZoneOrdinal zone = 0; zone < zones.Count(); ++zone)
    builder.Append(zones.At(zone).depth, {"", "z"}, zones.VerticesOf(zone));
  return builder.Build();
}

TEST(CrossingFinder, AgreesWithTheLiteralScanOnRandomWalks) {
  std::mt19937 random(3);
  std::size_t count = 0;
  for (int round = 0; round < 60; ++round) {
    const ZoneTree zones = WithoutSchedules(RandomZones(random, 1 + static_cast<int>(random() % 30)));
    Found found;
    found.finder.SetZones(zones);
    const auto rows = Walk(random, 150);
    found.points.Merge(1, rows);
    found.finder.PointsCame(1, rows.front().time);
    found.Work(1 + random() % 60);
    const auto literal = Literal(zones, rows);
    EXPECT_EQ(Plain(found.journal), literal) << "round " << round;
    count += literal.size();
  }
  EXPECT_GT(count, 2000u);
}

// However the points come: the same crossings, those that only late points showed marked.
TEST(CrossingFinder, LatePointsAreSortedIn) {
  std::mt19937 random(4);
  for (int round = 0; round < 40; ++round) {
    const ZoneTree zones = WithoutSchedules(RandomZones(random, 20));
    const auto rows = Walk(random, 120);
    std::vector<DataPoint> first, late;
    for (const DataPoint& row : rows) (random() % 3 == 0 ? late : first).push_back(row);
    Found found;
    found.finder.SetZones(zones);
    found.Add(first);
    const auto before = Plain(found.journal);
    found.Add(late);
    EXPECT_EQ(Plain(found.journal), Literal(zones, rows)) << "round " << round;
    for (const ZoneCrossing& crossing : found.journal) {
      const bool wasKnown = std::ranges::any_of(before, [&](const Passage& known) {
        return std::tie(std::get<0>(known), std::get<1>(known), std::get<2>(known)) ==
               std::tie(crossing.utc, crossing.zone, crossing.hasEntered);
      });
      const bool isNewer = crossing.wayEnd > *DecodePackedTime(first.back().time);
      EXPECT_EQ(crossing.isLate, !wasKnown && !isNewer) << "round " << round;
    }
    const std::string once = found.Text();
    found.finder.PointsCame(1, rows.front().time);
    found.Work(7);
    EXPECT_EQ(found.Text(), once) << "sent again";
  }
}

TEST(CrossingFinder, OrderAndAlertsOfNestedZones) {
  const struct {
    const char* what;
    ZoneKind kind;
    std::vector<std::pair<double, double>> places;  // a minute apart
    const char* found;
  } cases[] = {
      {"the first point is silent", ZoneKind::kAlerted, {{40.02, -74.98}, {40.021, -74.979}}, ""},
      {"through all of it",
       ZoneKind::kAlerted,
       {{40.02, -75.02}, {40.02, -74.94}},
       "12:00:15 in0! 12:00:22 in1 12:00:37 out1! 12:00:45 out0 in2!"},
      {"alerted the other way round",
       ZoneKind::kNonAlert,
       {{40.02, -75.02}, {40.02, -74.94}},
       "12:00:15 in0 12:00:22 in1! 12:00:37 out1 12:00:45 out0 in2"},
      {"out into the open", ZoneKind::kNonAlert, {{40.02, -75}, {40.02, -75.01}}, "12:00:00 out0!"},
      {"over a corner between two reports",
       ZoneKind::kAlerted,
       {{40.002, -75.001}, {39.999, -74.998}},
       "12:00:20 in0! 12:00:40 out0"},
  };
  for (const auto& [what, kind, places, text] : cases) {
    Found found;
    found.finder.SetZones(Nested(kind));
    std::vector<DataPoint> rows;
    for (const auto& [lat, lng] : places)
      rows.push_back(Point(kNoon + static_cast<Millis>(rows.size()) * kMinute, lat, lng));
    found.Add(rows);
    EXPECT_EQ(found.Text(), text) << what;
  }
}

TEST(CrossingFinder, ScheduleOfTheZoneThatDecides) {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  builder.Append(1, {"", "Tuesdays", "--T----"}, Square(40, -75, 0.04));
  builder.Append(1, {"", "mornings", "SMTWTFS", "0100", "1200"}, Square(40, -74.96, 0.04));
  Found found;
  found.clock.SetOffset(5 * 60);  // noon is 7 AM
  found.finder.SetZones(builder.Build());
  found.Add({Point(kNoon, 40.02, -75.02), Point(kNoon + kMinute, 40.02, -74.94),
             Point(kNoon + 5 * kHour, 40.02, -75.02), Point(kNoon + 29 * kHour, 40.02, -74.98),
             Point(kNoon + 30 * kHour, 40.02, -74.94)});
  std::string alerts;
  for (const ZoneCrossing& crossing : found.journal) {
    if (crossing.isAlert)
      alerts += IsoText(crossing.utc).substr(8, 8) + ' ' + std::to_string(crossing.zone) + ' ';
  }
  EXPECT_EQ(alerts, "23 12:00 1 24 05:00 0 ");
}

TEST(CrossingFinder, OverTheDateLine) {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  builder.Append(1, {"", "west"}, Square(-1, -180, 2));
  builder.Append(1, {"", "far"}, Square(-1, 0, 2));
  Found found;
  found.finder.SetZones(builder.Build());
  found.Add({Point(kNoon, 0, 179), Point(kNoon + kMinute, 0, -179), Point(kNoon + 2 * kMinute, 0, 178)});
  EXPECT_EQ(found.Text(), "12:00:30 in0! 12:01:20 out0");
}

}  // namespace
}  // namespace pallomir
