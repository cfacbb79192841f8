#include "zones/zone_neighbours.h"

#include <algorithm>
#include <span>

#include "zones/zone_query.h"

namespace pallomir {
namespace {

using Outline = std::vector<PlanePoint>;

struct Box {
  double left, right, top, bottom;
};

Box BoxOf(const PlanePoint& a, const PlanePoint& b) {
  return {std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)};
}

Box BoxOf(const Outline& outline) {
  Box box = BoxOf(outline.front(), outline.front());
  for (const PlanePoint& at : outline)
    box = {std::min(box.left, at.x), std::max(box.right, at.x), std::min(box.top, at.y),
           std::max(box.bottom, at.y)};
  return box;
}

bool Meet(const Box& a, const Box& b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

// On which side of the line from a to b: the sign.
double Side(const PlanePoint& a, const PlanePoint& b, const PlanePoint& p) {
  return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

// Whether they pass through each other; touching is not crossing.
bool Cross(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c, const PlanePoint& d) {
  return Side(a, b, c) * Side(a, b, d) < 0 && Side(c, d, a) * Side(c, d, b) < 0;
}

const PlanePoint& After(const Outline& outline, std::size_t i) { return outline[(i + 1) % outline.size()]; }

bool OutlinesCross(const Outline& one, const Outline& other) {
  const Box box = BoxOf(one);
  for (std::size_t i = 0; i < other.size(); ++i) {
    const Box edge = BoxOf(other[i], After(other, i));
    if (!Meet(edge, box)) continue;
    for (std::size_t j = 0; j < one.size(); ++j) {
      if (Meet(edge, BoxOf(one[j], After(one, j))) && Cross(other[i], After(other, i), one[j], After(one, j)))
        return true;
    }
  }
  return false;
}

// Without regard to the outline itself: a point on it is on either side.
bool IsInside(const Outline& outline, const PlanePoint& place) {
  bool inside = false;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const PlanePoint &a = outline[i], &b = After(outline, i);
    if ((a.y > place.y) == (b.y > place.y)) continue;
    if (place.x > a.x + (place.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

bool IsOnOutline(const Outline& outline, const PlanePoint& place) {
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const PlanePoint &a = outline[i], &b = After(outline, i);
    if (Side(a, b, place) == 0 && Meet(BoxOf(a, b), BoxOf(place, place))) return true;
  }
  return false;
}

Outline OutlineOf(const ZoneTree& tree, ZoneOrdinal zone) {
  Outline outline;
  for (const ZoneVertex& vertex : tree.VerticesOf(zone))
    outline.push_back(ProjectToPlane(vertex.lat, vertex.lng));
  return outline;
}

bool Overlap(const Outline& a, const Outline& b) {
  const auto hasCornerIn = [](const Outline& inner, const Outline& outer) {
    return std::ranges::any_of(
        inner, [&](const PlanePoint& at) { return !IsOnOutline(outer, at) && IsInside(outer, at); });
  };
  return OutlinesCross(a, b) || hasCornerIn(a, b) || hasCornerIn(b, a);
}

bool LeavesItsParent(const Outline& zone, const Outline& parent) {
  return OutlinesCross(zone, parent) || std::ranges::any_of(zone, [&](const PlanePoint& at) {
           return !IsOnOutline(parent, at) && !IsInside(parent, at);
         });
}

std::string NameOfZone(const ZoneTree& tree, ZoneOrdinal zone) {
  return tree.Section(zone) + " (" + tree.At(zone).options.Description + ")";
}

}  // namespace

std::vector<std::string> RemarksOn(const ZoneTree& tree, ZoneOrdinal zone) {
  constexpr std::size_t kMostRemarks = 4;
  constexpr std::size_t kMostComparisons = 4'000'000;  // of edges: a blink
  std::vector<std::string> remarks;
  const Outline outline = OutlineOf(tree, zone);
  if (outline.size() < 3) return remarks;
  const Box box = BoxOf(outline);
  const ZoneOrdinal parent = tree.At(zone).parent;
  const auto isQuick = [&outline](std::size_t corners) {
    return outline.size() * corners <= kMostComparisons;
  };
  if (parent != ZoneTree::kNone && tree.At(parent).vertexCount >= 3 && isQuick(tree.At(parent).vertexCount) &&
      LeavesItsParent(outline, OutlineOf(tree, parent)))
    remarks.push_back("Zone " + NameOfZone(tree, zone) + " reaches beyond zone " + NameOfZone(tree, parent) +
                      "; outside of it, it has no effect.");
  for (const ZoneOrdinal sibling : tree.ChildrenOf(parent)) {
    if (sibling == zone || tree.At(sibling).vertexCount < 3 || remarks.size() == kMostRemarks) continue;
    const Outline other = OutlineOf(tree, sibling);
    if (!isQuick(other.size())) continue;
    if (!Meet(BoxOf(other), box) || !Overlap(outline, other)) continue;
    remarks.push_back("Zones " + NameOfZone(tree, std::min(zone, sibling)) + " and " +
                      NameOfZone(tree, std::max(zone, sibling)) +
                      " overlap; where they do, the first one counts.");
  }
  return remarks;
}

}  // namespace pallomir
