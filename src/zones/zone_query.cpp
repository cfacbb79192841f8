#include "zones/zone_query.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "map/projection.h"

namespace pallomir {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Whether the edge from a to b counts for the place. The quotients stay as they are: computed in another way
// they would round otherwise, and a place on an edge could change sides.
bool IsCrossed(PlanePoint a, PlanePoint b, PlanePoint place) {
  if (a.y == b.y) return false;
  if (place.y == a.y) return b.y > a.y && a.x <= place.x;
  if (place.y == b.y) return b.y < a.y && b.x <= place.x;
  if (b.y > a.y) {
    return a.y < place.y && place.y < b.y && (b.x - a.x) / (b.y - a.y) <= (place.x - a.x) / (place.y - a.y);
  }
  return b.y < place.y && place.y < a.y && (b.x - a.x) / (b.y - a.y) >= (place.x - a.x) / (place.y - a.y);
}

}  // namespace

PlanePoint ProjectToPlane(double lat, double lng) { return {lng / 360 + 0.5, WorldYFraction(lat)}; }

ProjectedZoneTree::ProjectedZoneTree(const ZoneTree& tree)
    : isAlertOutside_(tree.TopLevelKind() == ZoneKind::kNonAlert) {
  Project(tree);
  if (!vertices_.empty()) BuildGrid();
}

void ProjectedZoneTree::Project(const ZoneTree& tree) {
  vertices_.reserve(tree.AllVertices().size());
  for (const ZoneVertex& vertex : tree.AllVertices())
    vertices_.push_back(ProjectToPlane(vertex.lat, vertex.lng));
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
    const ZoneTree::Node& node = tree.At(zone);
    nodes_.push_back(
        {node.subtreeEnd, node.firstVertex, node.vertexCount, tree.KindOf(zone) == ZoneKind::kAlerted});
    PlaneBox box{kInfinity, -kInfinity, kInfinity, -kInfinity};
    bool isFinite = true;
    for (std::uint32_t v = node.firstVertex; v < node.firstVertex + node.vertexCount; ++v) {
      const PlanePoint& at = vertices_[v];
      isFinite = isFinite && std::isfinite(at.y);
      box = {std::min(box.left, at.x - kPlaneMargin), std::max(box.right, at.x + kPlaneMargin),
             std::min(box.top, at.y - kPlaneMargin), std::max(box.bottom, at.y + kPlaneMargin)};
    }
    // A corner at a pole has no place: the rule decides, without a box.
    if (!isFinite) box = {-kInfinity, kInfinity, -kInfinity, kInfinity};
    boxes_.push_back(box);
  }
}

bool ProjectedZoneTree::Contains(const Node& zone, PlanePoint place) const {
  const PlanePoint* vertices = vertices_.data() + zone.firstVertex;
  if (zone.vertexCount < 2) return false;
  bool inside = false;
  PlanePoint previous = vertices[zone.vertexCount - 1];
  for (std::uint32_t v = 0; v < zone.vertexCount; ++v) {
    if (IsCrossed(previous, vertices[v], place)) inside = !inside;
    previous = vertices[v];
  }
  return inside;
}

ZoneOrdinal ProjectedZoneTree::DeepestByRule(PlanePoint place) const {
  ZoneOrdinal deepest = ZoneTree::kNone;
  ZoneOrdinal end = static_cast<ZoneOrdinal>(nodes_.size());
  for (ZoneOrdinal zone = 0; zone < end;) {
    if (boxes_[zone].Contains(place) && Contains(nodes_[zone], place)) {
      deepest = zone;
      end = nodes_[zone].subtreeEnd;
      ++zone;
    } else {
      zone = nodes_[zone].subtreeEnd;
    }
  }
  return deepest;
}

ProjectedZoneTree::Answer ProjectedZoneTree::AlertPosition(PlanePoint place) const {
  if (!std::isfinite(place.x) || !std::isfinite(place.y)) return {isAlertOutside_, ZoneTree::kNone};
  std::uint32_t deepest = kNearEdge;
  if (!grid_.IsEmpty()) {
    const auto cell = grid_.CellOf(place);
    if (!cell) return {isAlertOutside_, ZoneTree::kNone};
    deepest = cells_[*cell];
  }
  if (deepest == kNearEdge) deepest = DeepestByRule(place);
  return {deepest == ZoneTree::kNone ? isAlertOutside_ : nodes_[deepest].isAlert, deepest};
}

void ProjectedZoneTree::BuildGrid() {
  PlaneBox area{kInfinity, -kInfinity, kInfinity, -kInfinity};
  for (const PlaneBox& box : boxes_) {
    if (box.left > box.right) continue;  // no corners
    if (!std::isfinite(box.left)) return;
    area = {std::min(area.left, box.left), std::max(area.right, box.right), std::min(area.top, box.top),
            std::max(area.bottom, box.bottom)};
  }
  // So many that most cells are touched by no edge.
  constexpr long kFewest = 16, kMost = 512;
  grid_ = PlaneGrid(
      area, std::clamp(std::lround(3 * std::sqrt(static_cast<double>(vertices_.size()))), kFewest, kMost));
  cells_.assign(grid_.CellCount(), kUnknown);
  MarkEdges();
  FillFaces();
}

void ProjectedZoneTree::MarkEdges() {
  std::vector<std::uint32_t> touched;
  for (const Node& zone : nodes_) {
    for (std::uint32_t v = 0; v < zone.vertexCount; ++v) {
      const std::uint32_t previous = (v == 0 ? zone.vertexCount : v) - 1;
      touched.clear();
      grid_.AddCellsAlong(vertices_[zone.firstVertex + previous], vertices_[zone.firstVertex + v], touched);
      for (const std::uint32_t cell : touched) cells_[cell] = kNearEdge;
    }
  }
}

// The rule is asked once for each face, that is for cells that hang together without an edge between them.
void ProjectedZoneTree::FillFaces() {
  std::vector<std::size_t> pending;
  for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
    if (cells_[cell] == kUnknown) FillFace(cell, DeepestByRule(grid_.MiddleOf(cell)), pending);
  }
}

void ProjectedZoneTree::FillFace(std::size_t cell, std::uint32_t answer, std::vector<std::size_t>& pending) {
  const std::size_t across = grid_.CellsAcross();
  const auto take = [&](std::size_t next) {
    if (cells_[next] != kUnknown) return;
    cells_[next] = answer;
    pending.push_back(next);
  };
  take(cell);
  while (!pending.empty()) {
    const std::size_t at = pending.back();
    pending.pop_back();
    if (at % across != 0) take(at - 1);
    if (at % across != across - 1) take(at + 1);
    if (at >= across) take(at - across);
    if (at + across < cells_.size()) take(at + across);
  }
}

}  // namespace pallomir
