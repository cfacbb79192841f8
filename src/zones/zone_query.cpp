#include "zones/zone_query.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_format.h"
#include "map/projection.h"

namespace pallomir {
namespace {

// Coordinates lie between 0 and 1, so that no rounding of the rule moves an edge by as much.
constexpr double kMargin = 1e-12;

// Cells that an edge passes within this part of a cell's size, or within kMargin, count as touched by it.
constexpr double kCellMargin = 1e-6;

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

std::string ZoneKey(ZoneOrdinal zone) {
  constexpr std::uint64_t kFirst = 0x2000, kIdentifiersOfZone = 8;
  return HexDigits(kFirst + kIdentifiersOfZone * zone, 4);
}

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
    Box box{kInfinity, -kInfinity, kInfinity, -kInfinity};
    bool isFinite = true;
    for (std::uint32_t v = node.firstVertex; v < node.firstVertex + node.vertexCount; ++v) {
      const PlanePoint& at = vertices_[v];
      isFinite = isFinite && std::isfinite(at.y);
      box = {std::min(box.left, at.x - kMargin), std::max(box.right, at.x + kMargin),
             std::min(box.top, at.y - kMargin), std::max(box.bottom, at.y + kMargin)};
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
    const Box& box = boxes_[zone];
    const bool isNear =
        place.x >= box.left && place.x <= box.right && place.y >= box.top && place.y <= box.bottom;
    if (isNear && Contains(nodes_[zone], place)) {
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
  if (cellsAcross_ > 0) {
    const bool isInside =
        place.x >= area_.left && place.x < area_.right && place.y >= area_.top && place.y < area_.bottom;
    if (!isInside) return {isAlertOutside_, ZoneTree::kNone};
    const auto column = std::min(static_cast<long>((place.x - area_.left) * cellsPerX_), cellsAcross_ - 1);
    const auto row = std::min(static_cast<long>((place.y - area_.top) * cellsPerY_), cellsAcross_ - 1);
    deepest = cells_[static_cast<std::size_t>(row * cellsAcross_ + column)];
  }
  if (deepest == kNearEdge) deepest = DeepestByRule(place);
  return {deepest == ZoneTree::kNone ? isAlertOutside_ : nodes_[deepest].isAlert, deepest};
}

void ProjectedZoneTree::BuildGrid() {
  area_ = {kInfinity, -kInfinity, kInfinity, -kInfinity};
  for (const Box& box : boxes_) {
    if (box.left > box.right) continue;  // no corners
    if (!std::isfinite(box.left)) return;
    area_ = {std::min(area_.left, box.left), std::max(area_.right, box.right), std::min(area_.top, box.top),
             std::max(area_.bottom, box.bottom)};
  }
  // So many that most cells are touched by no edge.
  constexpr long kFewest = 16, kMost = 512;
  cellsAcross_ =
      std::clamp(std::lround(2 * std::sqrt(static_cast<double>(vertices_.size()))), kFewest, kMost);
  cellsPerX_ = static_cast<double>(cellsAcross_) / (area_.right - area_.left);
  cellsPerY_ = static_cast<double>(cellsAcross_) / (area_.bottom - area_.top);
  cellMargin_ = std::max(kCellMargin, kMargin * std::max(cellsPerX_, cellsPerY_));
  cells_.assign(static_cast<std::size_t>(cellsAcross_ * cellsAcross_), kUnknown);
  for (const Node& zone : nodes_) {
    for (std::uint32_t v = 0; v < zone.vertexCount; ++v) {
      const std::uint32_t previous = (v == 0 ? zone.vertexCount : v) - 1;
      MarkEdge(vertices_[zone.firstVertex + previous], vertices_[zone.firstVertex + v]);
    }
  }
  FillFaces();
}

// Marks the cells that the edge touches, row by row. All in units of cells from here on.
void ProjectedZoneTree::MarkEdge(PlanePoint a, PlanePoint b) {
  if (a.y > b.y) std::swap(a, b);
  const double ax = (a.x - area_.left) * cellsPerX_, bx = (b.x - area_.left) * cellsPerX_;
  const double ay = (a.y - area_.top) * cellsPerY_, by = (b.y - area_.top) * cellsPerY_;
  const auto firstRow = static_cast<long>(std::floor(ay - cellMargin_));
  const auto lastRow = static_cast<long>(std::floor(by + cellMargin_));
  const double slope = by - ay > cellMargin_ ? (bx - ax) / (by - ay) : 0;
  for (long row = firstRow; row <= lastRow; ++row) {
    double left = std::min(ax, bx), right = std::max(ax, bx);
    if (slope != 0) {
      const double atTop = ax + (std::max(static_cast<double>(row) - cellMargin_, ay) - ay) * slope;
      const double atBottom = ax + (std::min(static_cast<double>(row) + 1 + cellMargin_, by) - ay) * slope;
      left = std::max(left, std::min(atTop, atBottom));
      right = std::min(right, std::max(atTop, atBottom));
    }
    MarkRow(row, left, right);
  }
}

void ProjectedZoneTree::MarkRow(long row, double left, double right) {
  if (row < 0 || row >= cellsAcross_) return;
  const long first = std::max(static_cast<long>(std::floor(left - cellMargin_)), 0L);
  const long last = std::min(static_cast<long>(std::floor(right + cellMargin_)), cellsAcross_ - 1);
  for (long column = first; column <= last; ++column)
    cells_[static_cast<std::size_t>(row * cellsAcross_ + column)] = kNearEdge;
}

PlanePoint ProjectedZoneTree::MiddleOf(std::size_t cell) const {
  const auto across = static_cast<std::size_t>(cellsAcross_);
  const std::size_t row = cell / across, column = cell % across;
  return {area_.left + (static_cast<double>(column) + 0.5) / cellsPerX_,
          area_.top + (static_cast<double>(row) + 0.5) / cellsPerY_};
}

// The rule is asked once for each face, that is for cells that hang together without an edge between them.
void ProjectedZoneTree::FillFaces() {
  std::vector<std::size_t> pending;
  for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
    if (cells_[cell] == kUnknown) FillFace(cell, DeepestByRule(MiddleOf(cell)), pending);
  }
}

void ProjectedZoneTree::FillFace(std::size_t cell, std::uint32_t answer, std::vector<std::size_t>& pending) {
  const auto across = static_cast<std::size_t>(cellsAcross_);
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
