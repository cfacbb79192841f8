#include "map/projection.h"

#include <cmath>
#include <limits>

#include "base/data_point.h"

namespace pallomir {
namespace {

// A plain function: were it evaluated by the compiler, some entries would differ in their last bit from what
// the library computes for the same formula.
std::array<double, 1025> ComputeCosLatTable() {
  std::array<double, 1025> cosines{};
  for (std::size_t i = 0; i < cosines.size(); ++i) {
    const double lat = 2 * std::atan(std::exp(kPi - kTwoPi * static_cast<double>(i) / 1024)) - kPi / 2;
    cosines[i] = std::cos(lat);
  }
  return cosines;
}

}  // namespace

std::int32_t RoundToWorld(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  const double rounded = std::nearbyint(value);  // the default rounding mode takes halves to even
  if (!(rounded < Limits::max())) return Limits::max();
  if (rounded <= Limits::min()) return Limits::min();
  return static_cast<std::int32_t>(rounded);
}

std::int32_t LngToWorldX(std::int32_t lng) {
  double d = lng / kPositionUnitsPerDegree;
  d = d / 360;
  d = d + 0.5;
  return RoundToWorld(d * kWorldSize);
}

std::int32_t LatToWorldY(std::int32_t lat) {
  return RoundToWorld(WorldYFraction(lat / kPositionUnitsPerDegree) * kWorldSize);
}

double WorldYFraction(double latDegrees) {
  const double phi = latDegrees * kPi / 180;
  const double v = std::tan(phi) + 1 / std::cos(phi);
  return 0.5 - std::log(v) / kTwoPi;
}

double WorldXToLng(std::int32_t x) { return (x / kWorldSize - 0.5) * 360; }

double WorldYToLat(std::int32_t y) {
  const double t = (0.5 - y / kWorldSize) * kTwoPi;
  return (2 * std::atan(std::pow(kEuler, t)) - kPi / 2) * (180 / kPi);
}

std::int32_t DegreesToPositionUnits(double degrees) {
  return RoundToWorld(degrees * kPositionUnitsPerDegree);
}

const std::array<double, 1025>& CosLatTable() {
  static const std::array<double, 1025> table = ComputeCosLatTable();
  return table;
}

double CosLatAt(std::int32_t y) { return CosLatTable()[CosLatIndex(y)]; }

double GroundDistanceMiles(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
  const double dx = static_cast<double>(x2) - x1;
  const double dy = static_cast<double>(y2) - y1;
  return std::sqrt(dx * dx + dy * dy) * kMilesPerWorldUnit * CosLatAt(y2);
}

}  // namespace pallomir
