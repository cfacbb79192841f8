#pragma once

#include <optional>
#include <string>
#include <vector>

#include "zones/zone_exchange.h"

namespace pallomir {

using ZoneRing = std::vector<ZoneVertex>;

/// Gathers the polygons of a file that is imported, in any order, and makes a tree of them.
class ZoneCollector {
 public:
  /// A polygon of the file; its first ring is the outer one, the others are holes.
  struct Polygon {
    std::string id;      ///< as the file names it; may be empty
    std::string parent;  ///< the id of the zone that it lies in; may be empty
    ZoneOptions options;
    std::vector<ZoneRing> rings;
  };

  /// Rings may be closed by a repetition of their first corner. False, with a sentence in `problem`, where a
  /// corner lies outside the world.
  bool Take(Polygon polygon, std::string& problem);

  /// Zones in the order in which they came. One whose parent is unknown, or among its own descendants, goes
  /// to the top level.
  ZoneTree Build(ZoneKind topLevelKind) const;

 private:
  std::vector<Polygon> polygons_;
};

/// The options that a file has left out get their defaults: all days, any time, a name by number.
void CompleteOptions(ZoneOptions& options, std::size_t number);

std::string WriteGeoJson(const ZoneTree& tree);
ImportedZones ReadGeoJson(std::string_view file);
std::string WriteKml(const ZoneTree& tree);
ImportedZones ReadKml(std::string_view file);

}  // namespace pallomir
