#pragma once

#include <cstdint>

namespace pallomir::station {

/// Degrees, north and east positive.
struct Place {
  double latitude = 0;
  double longitude = 0;
};

inline constexpr double kMetersPerSecondPerMph = 0.44704;

/// Metres along the ground between two places on a sphere of 6371 km.
double GroundDistance(Place from, Place to);

/// The compass direction in which one leaves `from` for `to`: 0 = north, 90 = east, below 360.
double Bearing(Place from, Place to);

/// `from` moved by metres east and north. For distances of a few kilometres, away from the poles.
Place Moved(Place from, double metersEast, double metersNorth);

/// 1/600000 degree, rounded to the nearest; `degrees` is within -180..180.
std::int32_t PositionUnits(double degrees);

/// The status word of a report: speed in metres a second (capped at what nine bits hold), heading in degrees.
std::uint16_t StatusWord(double speed, double headingDegrees);

}  // namespace pallomir::station
