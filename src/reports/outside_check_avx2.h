#pragma once

#include <cstddef>
#include <cstdint>

#include "reports/search_area.h"

namespace pallomir {

/// LiesOutside for the first `pairs` pairs of a file's records, behind which there is another record; for
/// machines that have HasAvx2().
bool PairsLieOutsideByAvx2(const std::uint8_t* file, std::size_t pairs, const PositionBox& box);

}  // namespace pallomir
