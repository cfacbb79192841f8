#pragma once

#include <cstddef>
#include <span>

#include "base/data_point.h"

namespace pallomir {

/// Fills `miles` from element `from` on: the first point has 0, every other what the point before it has plus
/// the ground distance between the two. The elements before `from` are right already; `miles` is as long as
/// `points`.
void FillTravelledMiles(std::span<const DataPoint> points, double* miles, std::size_t from);

}  // namespace pallomir
