#include "zones/zone_area.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "map/projection.h"

namespace pallomir {
namespace {

constexpr double kRadiusInMiles = kMilesPerWorldUnit * kWorldSize / (2 * std::numbers::pi);

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

// The mean of the sine of the latitude along an edge that is straight on the map. There the latitude's
// Mercator height h grows evenly, and sin(lat) = tanh(h), whose integral is -ln(cos(lat)).
double MeanSine(double fromLat, double toLat) {
  constexpr double kFlat = 1e-3;  // below it the closed form loses digits, and three places are as good
  const double middle = (fromLat + toLat) / 2;
  if (std::abs(toLat - fromLat) < kFlat)
    return (std::sin(fromLat) + 4 * std::sin(middle) + std::sin(toLat)) / 6;
  const double height = std::asinh(std::tan(toLat)) - std::asinh(std::tan(fromLat));
  return std::log(std::cos(fromLat) / std::cos(toLat)) / height;
}

}  // namespace

double AreaInSquareMiles(std::span<const ZoneVertex> vertices) {
  constexpr double kNearestToPole = 89.999;  // the map has no poles
  const auto latitude = [&](const ZoneVertex& vertex) {
    return Radians(std::clamp(vertex.lat, -kNearestToPole, kNearestToPole));
  };
  double sum = 0;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const ZoneVertex& from = vertices[i];
    const ZoneVertex& to = vertices[(i + 1) % vertices.size()];
    sum += Radians(to.lng - from.lng) * MeanSine(latitude(from), latitude(to));
  }
  return std::abs(sum) * kRadiusInMiles * kRadiusInMiles;
}

}  // namespace pallomir
