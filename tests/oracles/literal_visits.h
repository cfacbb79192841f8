#pragma once

#include <filesystem>
#include <vector>

#include "reports/visit_search.h"

/// The rule of the search for visits in data files, written down step by step.
namespace pallomir::oracles {

struct LiteralSearch {
  std::vector<Visit> visits;  // as they are listed
  int error = 0;              // 65387, 776143 or none
};

/// Nobody changes the folder meanwhile.
LiteralSearch LiteralVisits(const std::filesystem::path& folder, const VisitQuery& query);

}  // namespace pallomir::oracles
