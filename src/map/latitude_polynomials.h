#pragma once

#include <array>
#include <cstdint>

#include "base/data_point.h"
#include "map/projection.h"

namespace pallomir {

/// World coordinates by approximation, for bulk_projection. Certified rounding: an approximation stands where
/// it is further from a half than it can be wrong; where it is not, about one latitude in a thousand, the
/// exact formula decides. So no result depends on the approximation.

/// World Y by a polynomial of its own for every slice of latitude: in the distance from the slice's southern
/// end, in latitude units, lowest power first.
using LatitudePolynomial = std::array<double, 4>;

inline constexpr int kSliceShift = 14;  // 0.027 degrees
inline constexpr std::int32_t kSlice = 1 << kSliceShift;
inline constexpr std::int32_t kSlicesEnd = 3296 * kSlice;  // just beyond 90 degrees, to both sides

/// Up to 85.3 degrees polynomials are good enough. Nearer to the poles their terms are not numbers, which no
/// comparison finds certain.
inline constexpr std::int32_t kCovered = 3124 * kSlice;

/// More than polynomial and formula can differ. Largest at the rim, where the secant is 12.2: there half a
/// slice, 2.4e-4 rad, to the fourth power x 6 sec^4 / 4! x 2^30 / 2 pi is 3.0e-3 of a unit. An eighth of it
/// remains (see ComputePolynomials), 3.8e-4; the terms behind it are 1e-5, and the formula itself is wrong by
/// up to 3e-5, because tangent and secant cancel in the south.
inline constexpr double kDoubt = 0x1p-11;

/// The polynomials of all slices from -kSlicesEnd on.
const LatitudePolynomial* LatitudePolynomials();

/// One factor in the place of the rule's two divisions may be wrong in the last bits, together with the rule
/// by less than 4e-7 of a unit. World X is lng x 2^21 / 421875 + 2^29, so it is never nearer to a half than
/// 1 / 843750 = 1.2e-6: both round alike, for all longitudes.
inline constexpr double kUnitsPerLongitude = kWorldSize / (360 * kPositionUnitsPerDegree);

}  // namespace pallomir
