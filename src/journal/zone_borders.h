#pragma once

#include <cstdint>
#include <vector>

#include "base/data_point.h"
#include "map/projection.h"
#include "zones/zone_query.h"
#include "zones/zone_tree.h"

namespace pallomir {

inline PlanePoint OnPlane(const DataPoint& point) { return {point.x / kWorldSize, point.y / kWorldSize}; }

/// Where a line between two places goes from zone to zone.
///
/// The rule. The edges of all zones cut the line into pieces; each piece lies in the zone that the query
/// gives for its middle, the end in the one that it gives for the end. Pieces of less than 4 mm are passed
/// over, so that a corner is one border and not two. A line that meets more than 1000 edges passes at its
/// end. It takes the short way around the earth.
///
/// How it is answered. Each cell of a grid knows the edges near it, and only those of the cells along the
/// line are looked at; within a cell without edges nothing is.
class ZoneBorders {
 public:
  /// The tree is not needed afterwards.
  explicit ZoneBorders(const ZoneTree& tree);

  /// The deepest zone on the way to a place; kNone outside all.
  ZoneOrdinal ZoneAt(PlanePoint place) const { return zones_.AlertPosition(place).deepest; }
  /// Whether a place is an alert position where this zone is the deepest; kNone stands for outside.
  bool IsAlertIn(ZoneOrdinal zone) const { return isAlert_[zone == ZoneTree::kNone ? 0 : zone + 1]; }

  /// True where the answer to `Along` would be empty, at little cost; false says nothing.
  bool StaysWithin(PlanePoint a, PlanePoint b) const {
    if (grid_.IsEmpty()) return hasNoEdges_;
    const auto cell = grid_.CellOf(a);
    if (!cell) return grid_.PassesBeside(a, b);
    const auto next = grid_.CellOf(b);
    if (next == cell) return KeepsClear(*cell, a, b);
    return next && KeepsClearBetween(*cell, *next, a, b);
  }

  struct Passage {
    double share = 0;  ///< of the line, 0 at its beginning
    ZoneOrdinal into = ZoneTree::kNone;
    bool operator==(const Passage&) const = default;
  };
  /// The passages of the line from `a`, which lies in `zone`, to `b`, in their order.
  std::vector<Passage> Along(PlanePoint a, ZoneOrdinal zone, PlanePoint b) const;

 private:
  struct Edge {
    PlanePoint from, to;
  };

  // Whether no edge near this cell comes near the line.
  bool KeepsClear(std::size_t cell, PlanePoint a, PlanePoint b) const {
    for (std::uint32_t at = firstEdge_[cell]; at < firstEdge_[cell + 1]; ++at) {
      if (MayCut(edges_[nearEdges_[at]], a, b)) return false;
    }
    return true;
  }
  bool KeepsClearBetween(std::size_t cell, std::size_t next, PlanePoint a, PlanePoint b) const;
  static bool MayCut(const Edge& edge, PlanePoint a, PlanePoint b);

  void ProjectEdges(const ZoneTree& tree);
  void BuildGrid();
  void AddCuts(PlanePoint a, PlanePoint b, std::vector<double>& shares) const;
  std::vector<std::uint32_t> EdgesNear(PlanePoint a, PlanePoint b) const;

  ProjectedZoneTree zones_;
  std::vector<bool> isAlert_;  // outside, then zone by zone
  std::vector<Edge> edges_;
  bool hasNoEdges_ = false;
  PlaneGrid grid_;                        // empty without edges, and where one has no end
  std::vector<std::uint32_t> firstEdge_;  // of each cell in nearEdges_, and the end
  std::vector<std::uint32_t> nearEdges_;
};

}  // namespace pallomir
