#include "map/bulk_projection_plain.h"

#include <bit>
#include <cmath>

#include "map/latitude_polynomials.h"

namespace pallomir {
namespace {

// Adding it to a number within 2^31 leaves the number, rounded half to even, in the sum's lowest bits.
constexpr double kRounder = 0x1.8p52;

std::int32_t LowestBits(double sum) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(sum)));
}

}  // namespace

void ProjectPlainly(std::span<DataPoint> rows) {
  const LatitudePolynomial* const polynomials = LatitudePolynomials();
  for (DataPoint& row : rows) {
    const std::int32_t lat = row.x;
    row.x = LowestBits(row.y * kUnitsPerLongitude + kWorldSize / 2 + kRounder);
    const LatitudePolynomial& p = polynomials[(lat + kSlicesEnd) >> kSliceShift];
    const double d = lat & (kSlice - 1);
    const double y = ((p[3] * d + p[2]) * d + p[1]) * d + p[0];
    const double sum = y + kRounder;
    row.y = std::abs(y - (sum - kRounder)) < 0.5 - kDoubt ? LowestBits(sum) : LatToWorldY(lat);
  }
}

}  // namespace pallomir
