#include "station/common/geo.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/data_point.h"

namespace pallomir::station {
namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
constexpr double kMetersPerDegree = kEarthRadius * kRadiansPerDegree;
constexpr double kSectorDegrees = 22.5;

}  // namespace

double GroundDistance(Place from, Place to) {
  const double sinHalfLat = std::sin((to.latitude - from.latitude) * kRadiansPerDegree / 2);
  const double sinHalfLng = std::sin((to.longitude - from.longitude) * kRadiansPerDegree / 2);
  const double h = sinHalfLat * sinHalfLat + std::cos(from.latitude * kRadiansPerDegree) *
                                                 std::cos(to.latitude * kRadiansPerDegree) * sinHalfLng *
                                                 sinHalfLng;
  return 2 * kEarthRadius * std::asin(std::sqrt(std::min(1.0, h)));
}

double Bearing(Place from, Place to) {
  const double lat1 = from.latitude * kRadiansPerDegree;
  const double lat2 = to.latitude * kRadiansPerDegree;
  const double lng = (to.longitude - from.longitude) * kRadiansPerDegree;
  const double east = std::sin(lng) * std::cos(lat2);
  const double north = std::cos(lat1) * std::sin(lat2) - std::sin(lat1) * std::cos(lat2) * std::cos(lng);
  const double degrees = std::atan2(east, north) / kRadiansPerDegree;
  return degrees < 0 ? std::fmod(degrees + 360, 360) : degrees;
}

Place Moved(Place from, double metersEast, double metersNorth) {
  return {from.latitude + metersNorth / kMetersPerDegree,
          from.longitude + metersEast / (kMetersPerDegree * std::cos(from.latitude * kRadiansPerDegree))};
}

std::int32_t PositionUnits(double degrees) {
  return static_cast<std::int32_t>(std::lround(degrees * kPositionUnitsPerDegree));
}

std::uint16_t StatusWord(double speed, double headingDegrees) {
  const double steps = speed / kMetersPerSecondPerMph / kMphPerSpeedStep;
  const auto speedField =
      static_cast<unsigned>(std::lround(std::clamp(steps, 0.0, double{kStatusSpeedMask})));
  const auto sector = static_cast<unsigned>(std::lround(headingDegrees / kSectorDegrees)) & 15;
  return static_cast<std::uint16_t>(sector << kStatusHeadingShift | speedField);
}

}  // namespace pallomir::station
