#include <algorithm>
#include <string_view>

#include "fuzz_input.h"
#include "reports/visit_search.h"
#include "reports/visits_answer.h"

// What a web site says of visits: whatever it is, what is taken from it can be listed.

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const auto read = ParseVisitsAnswer({reinterpret_cast<const char*>(data), size});
  if (const auto* complaint = std::get_if<std::string>(&read)) {
    PALLOMIR_DEMAND(!complaint->empty());
    return 0;
  }
  const auto& answer = std::get<VisitsAnswer>(read);
  PALLOMIR_DEMAND(answer.visits.size() <= kMostVisits && answer.problem.size() <= 2000);
  PALLOMIR_DEMAND(std::ranges::all_of(answer.visits, [](const ToldVisit& visit) {
    return visit.entry <= visit.exit && IsPossiblePackedTime(visit.entry) && IsPossiblePackedTime(visit.exit);
  }));
  return 0;
}
