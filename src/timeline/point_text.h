#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/civil_time.h"

namespace pallomir {

enum class LengthUnit { kMiles, kKilometers };

/// What is said about a data point.
struct PointFacts {
  Millis localTime = 0;
  std::uint32_t status = 0;  ///< status word, see base/data_point.h
  double miles = 0;          ///< that the unit had travelled by then
};

/// A unit as texts name it.
struct UnitLabel {
  std::size_t number = 0;
  std::string description;
};

/// "12.3 mph" or the same speed in "kph".
std::string SpeedText(std::uint32_t status, LengthUnit unit);

/// "1.23 mi" or the same distance in "km".
std::string DistanceText(double miles, LengthUnit unit);

/// Date and time, speed and distance, a line each.
std::string PointDetails(const PointFacts& point, LengthUnit unit);

/// The data-point text: "3: Delivery Route" over the details.
std::string PointText(const UnitLabel& label, const PointFacts& point, LengthUnit unit);

/// The text of the timeline's hover box: "Unit #3 Delivery Route" over the details of the point, if there is
/// one.
std::string HoverText(const UnitLabel& label, const std::optional<PointFacts>& point, LengthUnit unit);

}  // namespace pallomir
