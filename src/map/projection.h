#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace pallomir {

/// The world plane: a square of 2^30 x 2^30 units under spherical Mercator. X grows eastward from longitude
/// -180, Y grows southward; the equator and the prime meridian lie at 2^29. One unit is one pixel at zoom 22.
inline constexpr double kWorldSize = 1073741824.0;

/// The constants as every stored coordinate was computed with them: cut off, not full double precision.
/// Another last digit would move points by a unit.
inline constexpr double kPi = 3.14159265358979;
inline constexpr double kTwoPi = 6.28318530717958;
inline constexpr double kEuler = 2.71828182845905;

/// An equatorial circumference of 24901.46 miles over the 2^30 units of the plane.
inline constexpr double kMilesPerWorldUnit = 2.319137565791607e-05;

/// The nearest integer, halves to even, kept within 32 bits (a value that is none becomes the largest).
std::int32_t RoundToWorld(double value);

/// World X of a longitude in 1/600000 degree.
std::int32_t LngToWorldX(std::int32_t lng);

/// World Y of a latitude in 1/600000 degree. The poles have none and end at the limits of 32 bits.
std::int32_t LatToWorldY(std::int32_t lat);

/// World Y of a latitude in degrees as a fraction of the plane, neither scaled nor rounded.
double WorldYFraction(double latDegrees);

/// Degrees of world coordinates.
double WorldXToLng(std::int32_t x);
double WorldYToLat(std::int32_t y);

/// Degrees as an integer of 1/600000 degree, rounded half to even.
std::int32_t DegreesToPositionUnits(double degrees);

/// Cosine of the latitude at 1024 equal slices of world Y, both ends included.
const std::array<double, 1025>& CosLatTable();

/// The table's index for a world Y: the nearest slice, halves to even; a Y beyond the plane takes the end's.
inline std::size_t CosLatIndex(std::int32_t y) {
  const std::int32_t inPlane = std::clamp(y, 0, 1 << 30);
  return static_cast<std::size_t>((inPlane + 0x7FFFF + (inPlane >> 20 & 1)) >> 20);  // 2^30 / 1024 a slice
}

/// The table's entry for a world Y.
double CosLatAt(std::int32_t y);

/// Miles between two world points: the flat distance, stretched by the latitude of the point measured to.
double GroundDistanceMiles(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);

}  // namespace pallomir
