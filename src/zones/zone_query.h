#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zones/plane_grid.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// Degrees projected as the zones are. A place that has no projection (the poles) gives a y that is no finite
/// number.
PlanePoint ProjectToPlane(double lat, double lng);

/// The zones on the projected plane, for the question in which of them a place lies.
///
/// The rule. Of the zones at the top level the first that contains the place is followed, then the first of
/// its subzones, and so on. The position is an alert position when the top-level kind is "Non-Alert",
/// inverted once for each zone on that path. A zone contains a place when an odd number of its edges meet the
/// horizontal line through the place at or west of it. Of an edge the end with the smaller y belongs to it,
/// the other end does not; horizontal edges never count. A place without a projection lies in no zone.
///
/// How it is answered. A grid lies over all zones. Within a cell that no edge comes near, the answer is the
/// same everywhere and is kept; in the other cells the rule is applied, and zones whose box is not near are
/// passed over. "Near" is more than rounding can move an edge, so that no answer differs from the rule's.
class ProjectedZoneTree {
 public:
  /// The tree is not needed afterwards.
  explicit ProjectedZoneTree(const ZoneTree& tree);

  struct Answer {
    bool isAlert = false;
    ZoneOrdinal deepest = ZoneTree::kNone;  ///< the last zone of the path
    bool operator==(const Answer&) const = default;
  };

  /// For a place in degrees.
  Answer AlertPosition(double lat, double lng) const { return AlertPosition(ProjectToPlane(lat, lng)); }
  Answer AlertPosition(PlanePoint place) const;

 private:
  struct Node {
    ZoneOrdinal subtreeEnd;
    std::uint32_t firstVertex;
    std::uint32_t vertexCount;
    bool isAlert;  // the answer where this zone is the deepest
  };

  void Project(const ZoneTree& tree);
  void BuildGrid();
  void MarkEdges();
  void FillFaces();
  void FillFace(std::size_t cell, std::uint32_t answer, std::vector<std::size_t>& pending);
  ZoneOrdinal DeepestByRule(PlanePoint place) const;
  bool Contains(const Node& zone, PlanePoint place) const;

  static constexpr std::uint32_t kNearEdge = 0xFFFFFFFE;  // cells; others hold the deepest zone or kNone
  static constexpr std::uint32_t kUnknown = 0xFFFFFFFD;

  bool isAlertOutside_ = false;
  std::vector<Node> nodes_;
  std::vector<PlaneBox> boxes_;  // widened
  std::vector<PlanePoint> vertices_;
  PlaneGrid grid_;  // over all zones; empty where one has no end
  std::vector<std::uint32_t> cells_;
};

}  // namespace pallomir
