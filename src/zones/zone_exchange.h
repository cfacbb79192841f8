#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/work_progress.h"
#include "zones/zone_tree.h"

namespace pallomir {

// Zones as other programs know them: GeoJSON (RFC 7946) and KML (OGC 2.3). What is exported is read back
// equal, as long as its texts are UTF-8. Nesting is told by the identifier of the parent; options that the
// formats do not know are properties of our own, named after the fields of ZoneOptions.

enum class ZoneFormat { kGeoJson, kKml };

/// By the end of a file's name, "geojson", "json" or "kml" in any case.
std::optional<ZoneFormat> FormatOfName(std::string_view fileName);

std::string ExportZones(const ZoneTree& tree, ZoneFormat format);

/// No larger file is imported.
inline constexpr std::size_t kMaxImportSize = 64 << 20;

struct ImportedZones {
  ZoneTree tree;
  bool namesKind = false;  ///< the file is one of ours and says which kind the top level has
  std::string problem;     ///< empty, or a sentence that says why nothing was read
};

/// Every polygon of the file becomes a zone, with the name that the file gives it. A polygon's holes become
/// its subzones, which have the other kind. Places without an area (points, lines) are passed over. Once the
/// work is cancelled nothing that matters is returned.
ImportedZones ImportZones(std::string_view file, ZoneFormat format, WorkProgress* progress = nullptr);

/// The zones of both: those of `more` behind those of `tree`, whose top-level kind stays.
ZoneTree WithZonesAppended(const ZoneTree& tree, const ZoneTree& more);

}  // namespace pallomir
