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
    bool isOurs = false;  ///< written by `ExportZones`: its texts stand as they are, empty ones too
  };

  /// Options that the file leaves out get their defaults: all days, any time, a name by number. Rings may be
  /// closed by a repetition of their first corner. A corner outside the world is a problem.
  void Take(Polygon polygon);

  /// Nothing that comes afterwards is taken.
  void Fail(std::string problem);

  /// The zones in the order in which they came, or what is wrong with the file. One whose parent is unknown,
  /// or among its own descendants, goes to the top level. `kind` is the top-level kind as the file names it;
  /// without zones and without a kind the file is none of zones.
  ImportedZones Finish(const std::string& kind) const;

 private:
  ZoneTree Build(ZoneKind topLevelKind) const;

  std::vector<Polygon> polygons_;
  std::string problem_;
};

std::string WriteGeoJson(const ZoneTree& tree);
ImportedZones ReadGeoJson(std::string_view file, WorkProgress& progress);
std::string WriteKml(const ZoneTree& tree);
ImportedZones ReadKml(std::string_view file, WorkProgress& progress);

}  // namespace pallomir
