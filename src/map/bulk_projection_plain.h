#pragma once

#include <span>

#include "base/data_point.h"

namespace pallomir {

/// ProjectPositions for any machine, and the end of a run that a vector form leaves over.
void ProjectPlainly(std::span<DataPoint> rows);

}  // namespace pallomir
