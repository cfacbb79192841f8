#include <string_view>

#include "fuzz_input.h"
#include "zones/zone_exchange.h"

// Zones from files of other programs: what is read can be exported and is read back the same.

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  for (const ZoneFormat format : {ZoneFormat::kGeoJson, ZoneFormat::kKml}) {
    const ImportedZones read = ImportZones(file, format);
    PALLOMIR_DEMAND(read.problem.empty() || read.tree.IsEmpty());
    if (!read.problem.empty()) continue;
    const ImportedZones again = ImportZones(ExportZones(read.tree, format), format);
    PALLOMIR_DEMAND(again.problem.empty() && again.namesKind && again.tree.Count() == read.tree.Count());
    PALLOMIR_DEMAND(ExportZones(again.tree, format) == ExportZones(read.tree, format));
  }
  return 0;
}
