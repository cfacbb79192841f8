#include "oracles/literal_zones.h"

#include <cmath>
#include <utility>

namespace pallomir::oracles {
namespace {

constexpr double kPi = 3.14159265358979, kTwoPi = 6.28318530717958;

std::pair<double, double> Project(double lat, double lng) {
  const double phi = lat * kPi / 180;
  return {lng / 360 + 0.5, 0.5 - std::log(std::tan(phi) + 1 / std::cos(phi)) / kTwoPi};
}

bool Contains(std::span<const ZoneVertex> corners, double px, double py) {
  bool inside = false;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const ZoneVertex& before = corners[(i + corners.size() - 1) % corners.size()];
    const auto [x1, y1] = Project(before.lat, before.lng);
    const auto [x2, y2] = Project(corners[i].lat, corners[i].lng);
    bool crossed = false;
    if (y1 == y2) {
      crossed = false;
    } else if (py == y1) {
      crossed = y2 > y1 && x1 <= px;
    } else if (py == y2) {
      crossed = y2 < y1 && x2 <= px;
    } else if (y2 > y1 && y1 < py && py < y2) {
      crossed = (x2 - x1) / (y2 - y1) <= (px - x1) / (py - y1);
    } else if (y2 < y1 && y2 < py && py < y1) {
      crossed = (x2 - x1) / (y2 - y1) >= (px - x1) / (py - y1);
    }
    if (crossed) inside = !inside;
  }
  return inside;
}

// Of the children of this zone the first that contains the place, and so on.
void Follow(const ZoneTree& tree, ZoneOrdinal zone, double px, double py, LiteralAnswer& answer) {
  for (const ZoneOrdinal child : tree.ChildrenOf(zone)) {
    if (!Contains(tree.VerticesOf(child), px, py)) continue;
    answer = {!answer.isAlert, child};
    return Follow(tree, child, px, py, answer);
  }
}

}  // namespace

LiteralAnswer LiteralQuery(const ZoneTree& tree, double lat, double lng) {
  LiteralAnswer answer{tree.TopLevelKind() == ZoneKind::kNonAlert};
  const auto [px, py] = Project(lat, lng);
  Follow(tree, ZoneTree::kNone, px, py, answer);
  return answer;
}

}  // namespace pallomir::oracles
