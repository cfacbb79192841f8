#pragma once

#include <span>

#include "base/data_point.h"

namespace pallomir {

/// ProjectPositions for machines that have HasAvx2().
void ProjectByAvx2(std::span<DataPoint> rows);

}  // namespace pallomir
