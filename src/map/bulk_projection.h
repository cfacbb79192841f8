#pragma once

#include <span>

#include "base/data_point.h"

namespace pallomir {

/// Turns rows as they come off the wire into rows of the store, in place: on entry x is the latitude and y
/// the longitude, in 1/600000 degree and within 90 and 180 degrees; then they are world X and world Y. Gives
/// what LngToWorldX and LatToWorldY give, bit for bit.
void ProjectPositions(std::span<DataPoint> rows);

/// The ways to do so that this machine knows: the plain one first, the one that is used last.
using ProjectionKernel = void (*)(std::span<DataPoint>);
std::span<const ProjectionKernel> ProjectionKernels();

}  // namespace pallomir
