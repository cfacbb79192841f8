#include "zones/zone_path.h"

namespace pallomir {

std::string ZonePathText(const ZoneTree& zones, ZoneOrdinal zone) {
  constexpr int kMostNames = 6;
  std::string text;
  for (int names = 0; zone != ZoneTree::kNone; zone = zones.At(zone).parent) {
    if (++names > kMostNames) return "… › " + text;
    text = zones.At(zone).options.Description + (text.empty() ? "" : " › ") + text;
  }
  return text;
}

}  // namespace pallomir
