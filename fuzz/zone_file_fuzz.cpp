#include <cmath>
#include <string_view>

#include "fuzz_input.h"
#include "zones/zone_file.h"
#include "zones/zone_payload.h"
#include "zones/zone_query.h"

// The zone file: whatever it holds, the zones that are read are a tree, and written again they are the same.

namespace pallomir::fuzz {
namespace {

void CheckTree(const ZoneTree& tree) {
  int before = 0;
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
    const ZoneTree::Node& node = tree.At(zone);
    PALLOMIR_DEMAND(node.depth >= 1 && node.depth <= before + 1);
    PALLOMIR_DEMAND(node.subtreeEnd > zone && node.subtreeEnd <= tree.Count());
    PALLOMIR_DEMAND(node.subtreeEnd == tree.Count() || tree.At(node.subtreeEnd).depth <= node.depth);
    PALLOMIR_DEMAND(node.parent == ZoneTree::kNone ? node.depth == 1
                                                   : tree.At(node.parent).depth == node.depth - 1);
    PALLOMIR_DEMAND(ZonePayload(tree, zone).size() == 2 + 23 * node.vertexCount);
    before = node.depth;
  }
}

void CheckFile(std::string_view file) {
  const ZoneFileContent content = ReadZones(file);
  CheckTree(content.tree);
  PALLOMIR_DEMAND(!content.damage || content.damage->line >= 1);
  const std::string written = WriteZones(content.tree);
  const ZoneFileContent again = ReadZones(written);
  PALLOMIR_DEMAND(!again.damage && !again.illegalDepth && again.tree.Count() == content.tree.Count());
  PALLOMIR_DEMAND(WriteZones(again.tree) == written);

  const ProjectedZoneTree projected(content.tree);
  for (const ZoneVertex& vertex : content.tree.AllVertices()) {
    const ZoneOrdinal deepest = projected.AlertPosition(vertex.lat, vertex.lng).deepest;
    PALLOMIR_DEMAND(deepest == ZoneTree::kNone || deepest < content.tree.Count());
  }
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  pallomir::fuzz::CheckFile(text);
  if (const auto shape = pallomir::ParseShape(text)) {
    for (const pallomir::ZoneVertex& vertex : *shape)
      PALLOMIR_DEMAND(std::abs(vertex.lat) <= 90 && std::abs(vertex.lng) <= 180);
  }
  return 0;
}
