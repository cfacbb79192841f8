#include "fuzz_input.h"
#include "reports/search_area.h"
#include "station/visits_query.h"
#include "tracking/packets.h"

// The query of a question when units were where.
//
// Flags: -max_len=256

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const auto read = station::ParseVisitsQuery(AsText({data, size}));
  if (const auto* complaint = std::get_if<std::string>(&read)) {
    PALLOMIR_DEMAND(complaint->ends_with('.') && complaint->size() < 250);
    return 0;
  }
  const auto& command = std::get<station::VisitsCommand>(read);
  PALLOMIR_DEMAND(command.at.has_value() != command.box.has_value() && command.zone.empty());
  PALLOMIR_DEMAND(command.limit >= 1 && command.limit <= kMostVisits);
  for (const std::string& id : command.unitIds) PALLOMIR_DEMAND(IsUnitId(id));
  if (const auto& box = command.box)
    SearchArea::Rectangle(box->minLat, box->maxLat, box->minLng, box->maxLng);
  if (const auto& at = command.at) {
    const SearchArea area = SearchArea::Around(at->latitude, at->longitude, HalfHeightAt(command.zoom));
    PALLOMIR_DEMAND(!area.Box().IsEmpty());
  }
  return 0;
}
