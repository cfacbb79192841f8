#pragma once

#include <cstdint>

#include "base/packed_time.h"

namespace pallomir {

/// One position report as it is stored: 16 bytes, world coordinates instead of degrees.
struct DataPoint {
  std::uint32_t time = 0;    ///< packed UTC time; the flag is carried and ignored for ordering and display
  std::int32_t x = 0;        ///< world X, see map/projection.h
  std::int32_t y = 0;        ///< world Y
  std::uint32_t status = 0;  ///< status word, see below
  bool operator==(const DataPoint&) const = default;
};

/// Status word:
///
///     15..12            11                       10                    9     8..0
///     heading sector    sent and not received    sent and received     -     speed
///
/// Speed counts steps of 0.345233535 mph (0.3 knot); the heading has sixteen sectors of 22.5 degrees, 0 =
/// north.
inline constexpr std::uint32_t kStatusSpeedMask = 0x1FF;
inline constexpr std::uint32_t kStatusReceived = 0x400;
inline constexpr std::uint32_t kStatusNotReceived = 0x800;
inline constexpr int kStatusHeadingShift = 12;
inline constexpr double kMphPerSpeedStep = 0.345233535;
inline constexpr double kKilometersPerMile = 1.609344;

/// Positions on the wire and in files are integers of 1/600000 degree (a ten-thousandth of a minute of arc).
inline constexpr double kPositionUnitsPerDegree = 600000.0;

}  // namespace pallomir
