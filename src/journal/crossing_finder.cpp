#include "journal/crossing_finder.h"

#include <algorithm>
#include <cmath>

namespace pallomir {
namespace {

std::uint32_t TimeOf(const DataPoint& point) { return WithoutFlag(point.time); }
Millis UtcOf(const DataPoint& point) { return DecodePackedTime(point.time).value_or(0); }

std::int32_t Between(std::int32_t a, std::int32_t b, double share) {
  return RoundToWorld(a + share * (static_cast<double>(b) - a));
}

}  // namespace

void CrossingFinder::SetZones(const ZoneTree& zones) {
  borders_ = std::make_unique<ZoneBorders>(zones);
  parents_.clear();
  schedules_.clear();
  for (ZoneOrdinal zone = 0; zone < zones.Count(); ++zone) {
    parents_.push_back(zones.At(zone).parent);
    schedules_.emplace_back(zones.At(zone).options);
  }
  for (Unit& unit : units_) {
    unit.crossings.Clear();
    unit.lateUntil = 0;
  }
}

CrossingFinder::Unit& CrossingFinder::UnitAt(std::size_t k) {
  while (units_.size() < k) units_.emplace_back(limits_);
  return units_[k - 1];
}

void CrossingFinder::PointsCame(std::size_t k, std::uint32_t earliest) {
  Unit& unit = UnitAt(k);
  unit.earliest = std::min(unit.earliest, earliest);
}

bool CrossingFinder::HasWork() const {
  return borders_ && std::ranges::any_of(units_, [](const Unit& unit) { return unit.earliest != kNothing; });
}

// The point that the work begins at: the last one before those that came, or that was looked at.
std::size_t CrossingFinder::BeginOf(Unit& unit, std::span<const DataPoint> points) const {
  const std::uint32_t from = std::min(unit.seen, unit.earliest - 1);
  const auto behind = std::ranges::upper_bound(points, from, {}, TimeOf);
  unit.earliest = kNothing;
  return behind == points.begin() ? 0 : static_cast<std::size_t>(behind - points.begin()) - 1;
}

std::optional<CrossingFinder::Found> CrossingFinder::Work(std::size_t mostPoints) {
  if (!borders_) return std::nullopt;
  for (std::size_t k = 1; k <= std::min(units_.size(), points_.UnitCount()); ++k) {
    Unit& unit = units_[k - 1];
    if (unit.earliest == kNothing) continue;
    const auto all = points_.Track(k).Points();
    const std::size_t begin = BeginOf(unit, all);
    const auto points = all.subspan(begin, std::min(mostPoints + 1, all.size() - begin));
    if (points.empty()) continue;
    unit.seen = TimeOf(points.back());
    const auto found = Cross(unit, points);
    unit.lateUntil = std::max(unit.lateUntil, unit.seen);
    if (begin + points.size() < all.size()) unit.earliest = unit.seen + 1;
    return Found{k, unit.crossings.Replace(UtcOf(points.front()), UtcOf(points.back()), found)};
  }
  return std::nullopt;
}

std::vector<ZoneCrossing> CrossingFinder::Cross(const Unit& unit, std::span<const DataPoint> points) const {
  std::vector<ZoneCrossing> found;
  PlanePoint at = OnPlane(points.front());
  ZoneOrdinal zone = borders_->ZoneAt(at);
  for (std::size_t i = 1; i < points.size(); ++i) {
    const PlanePoint next = OnPlane(points[i]);
    if (!borders_->StaysWithin(at, next))
      AddWay(points[i - 1], points[i], zone, TimeOf(points[i]) <= unit.lateUntil, found);
    at = next;
  }
  return found;
}

void CrossingFinder::AddWay(const DataPoint& from, const DataPoint& to, ZoneOrdinal& zone, bool isLate,
                            std::vector<ZoneCrossing>& found) const {
  const auto passages = borders_->Along(OnPlane(from), zone, OnPlane(to));
  for (const auto& [share, into] : passages) {
    const Millis start = UtcOf(from), end = UtcOf(to);
    ZoneCrossing what;
    what.utc = start + std::llround(share * static_cast<double>(end - start));
    what.isLate = isLate;
    what.place = {Between(from.x, to.x, share), Between(from.y, to.y, share)};
    what.wayEnd = end;
    AddPassage(zone, into, what, found);
    zone = into;
  }
}

std::vector<ZoneOrdinal> CrossingFinder::PathTo(ZoneOrdinal zone) const {
  std::vector<ZoneOrdinal> path;
  for (; zone != ZoneTree::kNone; zone = parents_[zone]) path.push_back(zone);
  std::ranges::reverse(path);
  return path;
}

// The inner zones are left first, the outer ones entered first; the last of these crossings is where the unit
// has come to, and with it the alert.
void CrossingFinder::AddPassage(ZoneOrdinal from, ZoneOrdinal into, const ZoneCrossing& what,
                                std::vector<ZoneCrossing>& found) const {
  const auto left = PathTo(from), entered = PathTo(into);
  const auto apart = std::ranges::mismatch(left, entered);
  const auto add = [&](ZoneOrdinal zone, bool hasEntered) {
    found.push_back(what);
    found.back().zone = zone;
    found.back().hasEntered = hasEntered;
  };
  for (auto at = left.end(); at != apart.in1; --at) add(at[-1], false);
  for (auto at = apart.in2; at != entered.end(); ++at) add(*at, true);
  ZoneCrossing& last = found.back();
  const ZoneOrdinal decisive = into == ZoneTree::kNone ? last.zone : into;
  last.isAlert = borders_->IsAlertIn(into) && schedules_[decisive].Includes(clock_.ToLocal(what.utc));
}

}  // namespace pallomir
