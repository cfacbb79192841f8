#include "journal/zone_borders.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace pallomir {
namespace {

constexpr double kSlack = 1e-6;  // of an edge, at its ends
constexpr std::size_t kMostCuts = 1000;
constexpr double kShortestPiece = 1e-10;  // of the plane: 4 mm at the equator

double Cross(PlanePoint a, PlanePoint b) { return a.x * b.y - a.y * b.x; }
PlanePoint Minus(PlanePoint a, PlanePoint b) { return {a.x - b.x, a.y - b.y}; }

PlanePoint At(PlanePoint a, PlanePoint b, double share) {
  const double x = a.x + share * (b.x - a.x);
  return {x - std::floor(x), a.y + share * (b.y - a.y)};
}

}  // namespace

ZoneBorders::ZoneBorders(const ZoneTree& tree) : zones_(tree) {
  isAlert_.push_back(tree.TopLevelKind() == ZoneKind::kNonAlert);
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone)
    isAlert_.push_back(tree.KindOf(zone) == ZoneKind::kAlerted);
  ProjectEdges(tree);
  hasNoEdges_ = edges_.empty();
  if (!hasNoEdges_) BuildGrid();
}

void ZoneBorders::ProjectEdges(const ZoneTree& tree) {
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
    const auto vertices = tree.VerticesOf(zone);
    if (vertices.size() < 2) continue;  // contains nothing
    PlanePoint before = ProjectToPlane(vertices.back().lat, vertices.back().lng);
    for (const ZoneVertex& vertex : vertices) {
      const PlanePoint at = ProjectToPlane(vertex.lat, vertex.lng);
      edges_.push_back({before, at});
      before = at;
    }
  }
}

// Of two cells that touch: the line lies in the block of up to four that both span.
bool ZoneBorders::KeepsClearBetween(std::size_t cell, std::size_t next, PlanePoint a, PlanePoint b) const {
  const std::size_t across = grid_.CellsAcross();
  const std::size_t rows[] = {cell / across, next / across}, columns[] = {cell % across, next % across};
  const auto isFar = [](std::size_t one, std::size_t other) { return one > other + 1 || other > one + 1; };
  if (isFar(rows[0], rows[1]) || isFar(columns[0], columns[1])) return false;
  if (!KeepsClear(cell, a, b) || !KeepsClear(next, a, b)) return false;
  if (rows[0] == rows[1] || columns[0] == columns[1]) return true;
  return KeepsClear(rows[0] * across + columns[1], a, b) && KeepsClear(rows[1] * across + columns[0], a, b);
}

// Not where the edge lies beside the line's box, or both ends on one side of the edge. Margins are more than
// rounding can move anything.
bool ZoneBorders::MayCut(const Edge& edge, PlanePoint a, PlanePoint b) {
  const auto isBeside = [](double from, double to, double one, double other) {
    return std::max(from, to) < std::min(one, other) - kPlaneMargin ||
           std::min(from, to) > std::max(one, other) + kPlaneMargin;
  };
  if (isBeside(edge.from.x, edge.to.x, a.x, b.x) || isBeside(edge.from.y, edge.to.y, a.y, b.y)) return false;
  const PlanePoint side = Minus(edge.to, edge.from);
  const double margin = kPlaneMargin * (std::abs(side.x) + std::abs(side.y));
  const double ofA = Cross(side, Minus(a, edge.from)), ofB = Cross(side, Minus(b, edge.from));
  return !(ofA > margin && ofB > margin) && !(ofA < -margin && ofB < -margin);
}

void ZoneBorders::BuildGrid() {
  PlaneBox area{1, 0, 1, 0};
  for (const auto& [from, to] : edges_) {
    if (!std::isfinite(from.y)) return;  // a corner at a pole has no place
    area = {std::min(area.left, from.x - kPlaneMargin), std::max(area.right, from.x + kPlaneMargin),
            std::min(area.top, from.y - kPlaneMargin), std::max(area.bottom, from.y + kPlaneMargin)};
  }
  // So many that few edges are near each.
  constexpr long kFewest = 16, kMost = 1024;
  grid_ = PlaneGrid(
      area, std::clamp(std::lround(6 * std::sqrt(static_cast<double>(edges_.size()))), kFewest, kMost));
  // Twice along all edges: how many are near each cell, then which.
  std::vector<std::uint32_t> cells;
  const auto goAlong = [&](auto&& visit) {
    for (std::uint32_t edge = 0; edge < edges_.size(); ++edge) {
      cells.clear();
      grid_.AddCellsAlong(edges_[edge].from, edges_[edge].to, cells);
      for (const std::uint32_t cell : cells) visit(cell, edge);
    }
  };
  firstEdge_.assign(grid_.CellCount() + 1, 0);
  goAlong([&](std::uint32_t cell, std::uint32_t) { ++firstEdge_[cell + 1]; });
  std::partial_sum(firstEdge_.begin(), firstEdge_.end(), firstEdge_.begin());
  nearEdges_.resize(firstEdge_.back());
  std::vector<std::uint32_t> next = firstEdge_;
  goAlong([&](std::uint32_t cell, std::uint32_t edge) { nearEdges_[next[cell]++] = edge; });
}

// Each once.
std::vector<std::uint32_t> ZoneBorders::EdgesNear(PlanePoint a, PlanePoint b) const {
  std::vector<std::uint32_t> cells, near;
  grid_.AddCellsAlong(a, b, cells);
  for (const std::uint32_t cell : cells)
    near.insert(near.end(), nearEdges_.begin() + firstEdge_[cell], nearEdges_.begin() + firstEdge_[cell + 1]);
  std::ranges::sort(near);
  near.erase(std::unique(near.begin(), near.end()), near.end());
  return near;
}

// Where edges meet the line. Of an edge along it both ends count; too many cuts do no harm.
void ZoneBorders::AddCuts(PlanePoint a, PlanePoint b, std::vector<double>& shares) const {
  const PlanePoint way = Minus(b, a);
  const double square = way.x * way.x + way.y * way.y;
  const auto add = [&](double share) {
    if (share >= 0 && share <= 1) shares.push_back(share);
  };
  for (const std::uint32_t edge : EdgesNear(a, b)) {
    const auto& [from, to] = edges_[edge];
    const PlanePoint side = Minus(to, from), offset = Minus(from, a);
    const double turn = Cross(way, side);
    const double alongEdge = turn != 0 ? Cross(offset, way) / turn : -1;
    if (alongEdge >= -kSlack && alongEdge <= 1 + kSlack) add(Cross(offset, side) / turn);
    if (std::abs(turn) <= kPlaneMargin * square) {
      const PlanePoint end = Minus(to, a);
      add((offset.x * way.x + offset.y * way.y) / square);
      add((end.x * way.x + end.y * way.y) / square);
    }
  }
}

std::vector<ZoneBorders::Passage> ZoneBorders::Along(PlanePoint a, ZoneOrdinal zone, PlanePoint b) const {
  std::vector<Passage> passages;
  const double turn = b.x - a.x > 0.5 ? -1 : b.x - a.x < -0.5 ? 1 : 0;
  const PlanePoint target{b.x + turn, b.y};
  const double length = std::hypot(target.x - a.x, target.y - a.y);
  std::vector<double> shares;
  if (length > 0 && !grid_.IsEmpty()) {
    AddCuts(a, target, shares);
    if (turn != 0) AddCuts({a.x - turn, a.y}, b, shares);
    if (shares.size() > kMostCuts) shares.clear();
    std::ranges::sort(shares);
  }
  shares.push_back(1);
  const auto pass = [&](double share, ZoneOrdinal into) {
    if (into == zone) return;
    passages.push_back({share, into});
    zone = into;
  };
  double before = 0;
  for (const double share : shares) {
    if ((share - before) * length <= kShortestPiece) continue;
    pass(before, ZoneAt(At(a, target, (before + share) / 2)));
    before = share;
  }
  pass(1, ZoneAt(b));
  return passages;
}

}  // namespace pallomir
