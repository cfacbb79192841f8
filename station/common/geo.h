#pragma once

#include <cstdint>

namespace pallomir::station {

/// Degrees, north and east positive.
struct Place {
  double latitude = 0;
  double longitude = 0;
};

inline constexpr double kMetersPerSecondPerMph = 0.44704;

/// Of the sphere that all distances are measured on, in metres: the Earth's mean radius.
inline constexpr double kEarthRadius = 6371000;

/// Metres along the ground between two places.
double GroundDistance(Place from, Place to);

/// The compass direction at `from` towards `to`, in degrees from 0 up to, not including, 360: 0 = north, 90 =
/// east.
double Bearing(Place from, Place to);

/// `from` moved by metres east and north. Good for a few kilometres, away from the poles.
Place Moved(Place from, double metersEast, double metersNorth);

/// An angle in the unit of records, 1/600000 degree, rounded to the nearest. `degrees` is within -180 to 180.
std::int32_t PositionUnits(double degrees);

/// A record's status word with speed and heading, all other bits clear. `speed` is in metres a second, capped
/// to what nine bits hold; `headingDegrees`, any compass direction, is rounded to one of 16 sectors.
std::uint16_t StatusWord(double speed, double headingDegrees);

}  // namespace pallomir::station
