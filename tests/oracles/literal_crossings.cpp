#include "oracles/literal_crossings.h"

#include <algorithm>
#include <cmath>

namespace pallomir::oracles {
namespace {

constexpr double kPi = 3.14159265358979, kTwoPi = 6.28318530717958, kWorld = 1073741824.0;

struct Edge {
  double x1, y1, x2, y2;  // on the plane
};

void AddZones(const LiteralZone& zone, std::vector<int>& path, std::vector<std::vector<int>>& paths,
              std::vector<Edge>& edges) {
  const auto plane = [](std::pair<double, double> at) {
    const double phi = at.first * kPi / 180;
    return std::pair(at.second / 360 + 0.5, 0.5 - std::log(std::tan(phi) + 1 / std::cos(phi)) / kTwoPi);
  };
  for (const auto& child : zone.children) {
    path.push_back(child->ordinal);
    paths.push_back(path);
    for (std::size_t i = 0; i < child->vertices.size(); ++i) {
      const auto [x1, y1] = plane(child->vertices[i]);
      const auto [x2, y2] = plane(child->vertices[(i + 1) % child->vertices.size()]);
      edges.push_back({x1, y1, x2, y2});
    }
    AddZones(*child, path, paths, edges);
    path.pop_back();
  }
}

LiteralAnswer QueryAt(const LiteralTree& tree, double x, double y) {
  const double lat = (2 * std::atan(std::exp((0.5 - y) * kTwoPi)) - kPi / 2) * 180 / kPi;
  return LiteralQuery(tree, lat, (x - 0.5) * 360);
}

std::vector<double> CutsOf(const std::vector<Edge>& edges, double ax, double ay, double bx, double by) {
  std::vector<double> cuts{0, 1};
  for (const Edge& edge : edges) {
    const double ex = edge.x2 - edge.x1, ey = edge.y2 - edge.y1;
    const double turn = (bx - ax) * ey - (by - ay) * ex;
    const double share = ((edge.x1 - ax) * ey - (edge.y1 - ay) * ex) / turn;
    if (turn != 0 && share > 0 && share < 1) cuts.push_back(share);
  }
  std::sort(cuts.begin(), cuts.end());
  return cuts;
}

}  // namespace

std::vector<LiteralCrossing> LiteralCrossings(const LiteralTree& tree,
                                              const std::vector<LiteralPlace>& places) {
  std::vector<std::vector<int>> paths;
  std::vector<Edge> edges;
  std::vector<int> none;
  AddZones(tree.root, none, paths, edges);
  const auto pathOf = [&](int zone) { return zone < 0 ? none : paths[static_cast<std::size_t>(zone)]; };
  std::vector<LiteralCrossing> crossings;
  int zone = QueryAt(tree, places[0].x / kWorld, places[0].y / kWorld).deepest;
  for (std::size_t i = 1; i < places.size(); ++i) {
    const LiteralPlace &a = places[i - 1], &b = places[i];
    const double ax = a.x / kWorld, ay = a.y / kWorld, bx = b.x / kWorld, by = b.y / kWorld;
    const auto cuts = CutsOf(edges, ax, ay, bx, by);
    for (std::size_t c = 1; c < cuts.size(); ++c) {
      if ((cuts[c] - cuts[c - 1]) * std::hypot(bx - ax, by - ay) < 1e-10) continue;
      const double middle = (cuts[c - 1] + cuts[c]) / 2;
      const LiteralAnswer answer = QueryAt(tree, ax + middle * (bx - ax), ay + middle * (by - ay));
      if (answer.deepest == zone) continue;
      const auto before = pathOf(zone), after = pathOf(answer.deepest);
      const auto utc = a.utc + std::llround(cuts[c - 1] * static_cast<double>(b.utc - a.utc));
      std::size_t common = 0;
      while (common < before.size() && common < after.size() && before[common] == after[common]) ++common;
      for (std::size_t n = before.size(); n > common; --n)
        crossings.push_back({utc, before[n - 1], false, false});
      for (std::size_t n = common; n < after.size(); ++n) crossings.push_back({utc, after[n], true, false});
      crossings.back().isAlert = answer.isAlert;
      zone = answer.deepest;
    }
  }
  return crossings;
}

}  // namespace pallomir::oracles
