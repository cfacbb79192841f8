#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

/// What it means for a position to lie in a zone. Kinds alternate with depth: the zones at depth 1 have the
/// top-level kind, their subzones the other one, and so on.
enum class ZoneKind { kAlerted, kNonAlert };

/// "Alerted" or "Non-Alert".
const char* NameOf(ZoneKind kind);
ZoneKind OtherKind(ZoneKind kind);

/// A corner of a zone, in degrees. The polygon closes from the last corner back to the first.
struct ZoneVertex {
  double lat = 0;
  double lng = 0;
  bool operator==(const ZoneVertex&) const = default;
};

/// The box around a zone's corners, in degrees; empty before the first one.
struct ZoneBounds {
  double minLat = 90;
  double maxLat = -90;
  double minLng = 180;
  double maxLng = -180;

  bool IsEmpty() const { return maxLat < minLat; }
  void Widen(const ZoneVertex& vertex);
  bool operator==(const ZoneBounds&) const = default;
};

/// What the user says about a zone; bytes of UTF-8, carried as they are.
struct ZoneOptions {
  std::string Spare;                   ///< without a meaning of its own
  std::string Description;             ///< the zone's name
  std::string DaysOfWeek = "SMTWTFS";  ///< Sunday first; "-" for a day that is excluded
  std::string StartTime = "0000";      ///< HHMM, HH an index into the dialog's start hours; see zone_hours.h
  std::string EndTime = "0000";        ///< HHMM, HH an index into the 24 hours from the start hour on
  bool operator==(const ZoneOptions&) const = default;
};

/// A zone as one unit of an edit: its options and its own corners.
struct ZoneContent {
  ZoneOptions options;
  std::vector<ZoneVertex> vertices;
};

/// A zone's place in the file, from 0: a zone, then its whole subtree, then its next sibling.
using ZoneOrdinal = std::uint32_t;

/// All zones, as one array in the order of the file. The subzones of the zone at `o` lie in the range from
/// o + 1 to its `subtreeEnd`; the first one, if any, is o + 1, and each is followed by its next sibling at
/// its own `subtreeEnd`. Nothing about it is recursive, so that no depth is too deep.
class ZoneTree {
 public:
  struct Node {
    int depth = 1;               ///< 1 for a top-level zone
    std::uint32_t number = 1;    ///< among its siblings, from 1
    ZoneOrdinal parent = 0;      ///< kNone for a top-level zone
    ZoneOrdinal subtreeEnd = 0;  ///< the ordinal behind its last descendant
    std::uint32_t firstVertex = 0;
    std::uint32_t vertexCount = 0;
    ZoneBounds bounds;
    ZoneOptions options;
  };
  static constexpr ZoneOrdinal kNone = 0xFFFFFFFF;

  ZoneKind TopLevelKind() const { return topLevelKind_; }
  ZoneOrdinal Count() const { return static_cast<ZoneOrdinal>(nodes_.size()); }
  bool IsEmpty() const { return nodes_.empty(); }
  const Node& At(ZoneOrdinal zone) const { return nodes_[zone]; }
  std::span<const ZoneVertex> VerticesOf(ZoneOrdinal zone) const;
  std::span<const ZoneVertex> AllVertices() const { return vertices_; }
  ZoneContent ContentOf(ZoneOrdinal zone) const;

  /// The kind of zones at this depth.
  ZoneKind KindAt(int depth) const;
  ZoneKind KindOf(ZoneOrdinal zone) const { return KindAt(nodes_[zone].depth); }

  /// The children of a zone, or the top-level zones of kNone, in order.
  std::vector<ZoneOrdinal> ChildrenOf(ZoneOrdinal zone) const;

  /// The dotted number, "1.2.1".
  std::string Section(ZoneOrdinal zone) const;
  /// The zone of a dotted number; nothing where there is none.
  std::optional<ZoneOrdinal> WithSection(std::string_view section) const;

  bool operator==(const ZoneTree& other) const;

 private:
  friend class ZoneTreeBuilder;

  ZoneKind topLevelKind_ = ZoneKind::kAlerted;
  std::vector<Node> nodes_;
  std::vector<ZoneVertex> vertices_;
};

/// Makes a tree of zones that come in the order of the file.
class ZoneTreeBuilder {
 public:
  explicit ZoneTreeBuilder(ZoneKind topLevelKind);

  /// Whether a zone of this depth may come next: 1, or up to one more than that of the zone before.
  bool Takes(int depth) const;

  /// Begins a zone; `depth` is one that `Takes` allows. Corners that are added are its own.
  void Begin(int depth, ZoneOptions options);
  void Add(const ZoneVertex& vertex);
  /// Takes the zone that was begun last away again. It has no subzones yet.
  void DropLast();

  void Append(int depth, const ZoneOptions& options, std::span<const ZoneVertex> vertices);

  ZoneTree Build();

 private:
  void CloseFrom(int depth);

  ZoneTree tree_;
  std::vector<ZoneOrdinal> open_;              // open_[d - 1]: the zone of depth d that takes subzones
  std::vector<std::uint32_t> childCounts_{0};  // of the root and of each open zone
};

}  // namespace pallomir
