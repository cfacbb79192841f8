#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "zones/zone_tree.h"

namespace pallomir {

/// The zone file holds all zones as text: the top-level kind, then a record for each zone in the order of
/// ZoneTree. A record is a header and a line for each corner:
///
///     "Alerted"
///     1,1,"","Depot","SMTWTFS","0000","0000"     1, depth, and the five texts of ZoneOptions
///     1,40.1,-75.2                               1: another corner follows; latitude, longitude in degrees
///     0,40.2,-75.1                               0: the last corner
///
/// It is read as one stream of fields: the end of a line (CR LF, LF or CR) separates like a comma, what
/// stands between a closing quote and the next separator is dropped, blank lines and a byte order mark are
/// skipped.

/// No larger zone file is read.
inline constexpr std::size_t kMaxZoneFileSize = 64 << 20;

/// Why a zone file could not be read to its end.
struct ZoneFileDamage {
  std::size_t line = 0;  ///< from 1
  std::string what;      ///< the end of a sentence that begins with the line: "is not a latitude"
};

struct ZoneFileContent {
  ZoneTree tree;  ///< the zones before the damage
  std::optional<ZoneFileDamage> damage;
  /// A depth that can't follow the zone before it. Then the tree is of no use.
  std::optional<int> illegalDepth;
};

ZoneFileContent ReadZones(std::string_view file);

/// The file's text. Numbers are the shortest that read back equal, without exponent. The format knows no
/// escape for a double quote: it becomes a single one.
std::string WriteZones(const ZoneTree& tree);

}  // namespace pallomir
