#pragma once

#include <random>
#include <string>

#include "zones/zone_tree.h"

namespace pallomir {

/// A tree that no one drew: depths up and down at random, shapes that cross themselves and each other,
/// corners on a coarse grid so that edges meet, lie level and upon one another.
inline ZoneTree RandomZones(std::mt19937& random, int zones, int steps = 12) {
  const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  ZoneTreeBuilder builder(number(2) == 0 ? ZoneKind::kAlerted : ZoneKind::kNonAlert);
  int depth = 0;
  for (int i = 0; i < zones; ++i) {
    depth = 1 + number(depth + 1);
    builder.Begin(depth, {"s" + std::to_string(i), "zone, " + std::to_string(i), "-MTWTF-", "0800", "1730"});
    for (int v = 1 + number(8); v > 0; --v)
      builder.Add({40 + number(steps) / 64.0, -75 + number(steps) / 64.0});
  }
  return builder.Build();
}

/// A square from the corner at `lat`, `lng` on, `size` degrees long.
inline std::vector<ZoneVertex> Square(double lat, double lng, double size) {
  return {{lat, lng}, {lat, lng + size}, {lat + size, lng + size}, {lat + size, lng}};
}

/// The tree in a line: "Alerted 1:Depot 1.1:Bay 2:Yard".
inline std::string Outline(const ZoneTree& tree) {
  std::string text = NameOf(tree.TopLevelKind());
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone)
    text += ' ' + tree.Section(zone) + ':' + tree.At(zone).options.Description;
  return text;
}

/// The same, and behind it the count of each zone's corners: "Alerted 1:Depot 2:Yard 4 3".
inline std::string OutlineWithCorners(const ZoneTree& tree) {
  std::string text = Outline(tree);
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone)
    text += ' ' + std::to_string(tree.At(zone).vertexCount);
  return text;
}

}  // namespace pallomir
