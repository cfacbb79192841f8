#include "map/latitude_polynomials.h"

#include <cmath>
#include <limits>
#include <vector>

namespace pallomir {
namespace {

std::vector<LatitudePolynomial> ComputePolynomials() {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  std::vector<LatitudePolynomial> polynomials(2 * kSlicesEnd / kSlice, {kNone, kNone, kNone, kNone});
  constexpr double kStep = kPi / 180 / kPositionUnitsPerDegree;
  constexpr double kRadius = kWorldSize / kTwoPi;
  constexpr double h = kSlice / 2;
  for (std::int32_t south = -kCovered; south < kCovered; south += kSlice) {
    const double tangent = std::tan((south + h) * kStep);
    const double secant = 1 / std::cos((south + h) * kStep);
    const double square = secant * secant;
    // The Taylor series of the scaled -asinh(tan) at the slice's middle.
    double a = kWorldSize / 2 - kRadius * std::asinh(tangent);
    const double b = -kRadius * secant * kStep;
    double c = b * kStep * tangent / 2;
    const double d = b * kStep * kStep * (2 * square - 1) / 6;
    const double e = b * kStep * kStep * kStep * tangent * (6 * square - 1) / 24;
    // The fourth power is left out: within the slice x^4 is h^2 x^2 - h^4 / 8 but for an eighth of h^4.
    a -= e * h * h * h * h / 8;
    c += e * h * h;
    // The same cubic, counted from the slice's end.
    polynomials[static_cast<std::size_t>((south + kSlicesEnd) / kSlice)] = {
        a - h * (b - h * (c - h * d)), b - h * (2 * c - 3 * h * d), c - 3 * h * d, d};
  }
  return polynomials;
}

}  // namespace

const LatitudePolynomial* LatitudePolynomials() {
  static const std::vector<LatitudePolynomial> polynomials = ComputePolynomials();
  return polynomials.data();
}

}  // namespace pallomir
