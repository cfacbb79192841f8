#include "reports/search_area.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/data_point.h"

namespace pallomir {
namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();

// The least whole number whose degrees are above `degrees`; beyond all positions where there is none.
std::int64_t FirstAbove(double degrees) {
  auto units = static_cast<std::int64_t>(
      std::floor(std::clamp(degrees * kPositionUnitsPerDegree, kLeast - 2.0, kMost + 2.0)));
  while (static_cast<double>(units) / kPositionUnitsPerDegree > degrees && units >= kLeast) --units;
  while (!(static_cast<double>(units) / kPositionUnitsPerDegree > degrees) && units <= kMost) ++units;
  return units;
}

// Between two values, both included, as far as positions go. False where there are none.
bool Narrow(std::int64_t least, std::int64_t most, std::int32_t& from, std::int32_t& to) {
  least = std::max(least, kLeast);
  most = std::min(most, kMost);
  if (least > most) return false;
  from = static_cast<std::int32_t>(least);
  to = static_cast<std::int32_t>(most);
  return true;
}

PositionBox BoxOf(std::int64_t minLat, std::int64_t maxLat, std::int64_t minLng, std::int64_t maxLng) {
  PositionBox box;
  const bool isSome = Narrow(minLat, maxLat, box.minLatitude, box.maxLatitude) &&
                      Narrow(minLng, maxLng, box.minLongitude, box.maxLongitude);
  return isSome ? box : PositionBox{};
}

// A unit more on each side than the corners need, which is far more than rounding can move an edge. Corners
// near a pole may have no place in the projection, then nothing can be said.
PositionBox BoxAround(const ZoneBounds& bounds) {
  constexpr double kNearPole = 89;
  constexpr auto kPole = static_cast<std::int64_t>(90 * kPositionUnitsPerDegree);
  if (bounds.IsEmpty()) return {};
  if (bounds.minLat < -kNearPole || bounds.maxLat > kNearPole) return BoxOf(-kPole, kPole, kLeast, kMost);
  return BoxOf(FirstAbove(bounds.minLat) - 2, FirstAbove(bounds.maxLat) + 1, FirstAbove(bounds.minLng) - 2,
               FirstAbove(bounds.maxLng) + 1);
}

}  // namespace

double HalfHeightAt(int zoom) {
  constexpr int kLastZoomThatHalves = 13;
  return std::ldexp(216000 / 131370016.8, std::max(0, kLastZoomThatHalves - zoom));
}

SearchArea SearchArea::Rectangle(double minLat, double maxLat, double minLng, double maxLng) {
  // The last below an edge is the first above it with all signs turned round.
  SearchArea area;
  if (minLat < maxLat && minLng < maxLng)
    area.box_ = BoxOf(FirstAbove(minLat), -FirstAbove(-maxLat), FirstAbove(minLng), -FirstAbove(-maxLng));
  return area;
}

SearchArea SearchArea::Around(double lat, double lng, double halfHeight) {
  const double halfWidth = halfHeight / std::cos(lat * std::numbers::pi / 180);
  return Rectangle(lat - halfHeight, lat + halfHeight, lng - halfWidth, lng + halfWidth);
}

SearchArea SearchArea::OfZone(const ZoneTree& zones, ZoneOrdinal zone) {
  SearchArea area;
  area.box_ = BoxAround(zones.At(zone).bounds);
  area.zones_ = std::make_shared<ProjectedZoneTree>(zones);
  area.zone_ = zone;
  area.zoneEnd_ = zones.At(zone).subtreeEnd;
  return area;
}

bool SearchArea::Contains(std::int32_t latitude, std::int32_t longitude) const {
  if (!box_.Contains(latitude, longitude)) return false;
  if (zones_ == nullptr) return true;
  const ZoneOrdinal deepest =
      zones_->AlertPosition(latitude / kPositionUnitsPerDegree, longitude / kPositionUnitsPerDegree).deepest;
  return deepest != ZoneTree::kNone && deepest >= zone_ && deepest < zoneEnd_;
}

}  // namespace pallomir
