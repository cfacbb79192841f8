#include "zones/zone_edits.h"

#include <utility>

namespace pallomir {
namespace {

void Copy(ZoneTreeBuilder& builder, const ZoneTree& tree, ZoneOrdinal from, ZoneOrdinal end) {
  for (ZoneOrdinal zone = from; zone < end; ++zone)
    builder.Append(tree.At(zone).depth, tree.At(zone).options, tree.VerticesOf(zone));
}

}  // namespace

ZoneTree WithZoneAdded(const ZoneTree& tree, ZoneOrdinal parent, ZoneContent content) {
  const bool isTopLevel = parent == ZoneTree::kNone;
  const ZoneOrdinal place = isTopLevel ? tree.Count() : tree.At(parent).subtreeEnd;
  content.options.Spare = tree.IsEmpty() ? "" : tree.At(tree.Count() - 1).options.Spare;
  ZoneTreeBuilder builder(tree.TopLevelKind());
  Copy(builder, tree, 0, place);
  builder.Append(isTopLevel ? 1 : tree.At(parent).depth + 1, content.options, content.vertices);
  Copy(builder, tree, place, tree.Count());
  return builder.Build();
}

ZoneTree WithZoneChanged(const ZoneTree& tree, ZoneOrdinal zone, ZoneContent content) {
  content.options.Spare = tree.At(zone).options.Spare;
  ZoneTreeBuilder builder(tree.TopLevelKind());
  Copy(builder, tree, 0, zone);
  builder.Append(tree.At(zone).depth, content.options, content.vertices);
  Copy(builder, tree, zone + 1, tree.Count());
  return builder.Build();
}

ZoneTree WithZoneDeleted(const ZoneTree& tree, ZoneOrdinal zone) {
  ZoneTreeBuilder builder(tree.TopLevelKind());
  Copy(builder, tree, 0, zone);
  Copy(builder, tree, tree.At(zone).subtreeEnd, tree.Count());
  return builder.Build();
}

ZoneTree WithKindSwapped(const ZoneTree& tree) {
  ZoneTreeBuilder builder(OtherKind(tree.TopLevelKind()));
  Copy(builder, tree, 0, tree.Count());
  return builder.Build();
}

}  // namespace pallomir
