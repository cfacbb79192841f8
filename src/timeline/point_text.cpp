#include "timeline/point_text.h"

#include "base/data_point.h"
#include "base/number_format.h"

namespace pallomir {
namespace {

double InUnit(double miles, LengthUnit unit) {
  return unit == LengthUnit::kKilometers ? miles * kKilometersPerMile : miles;
}

}  // namespace

std::string SpeedText(std::uint32_t status, LengthUnit unit) {
  const double mph = (status & kStatusSpeedMask) * kMphPerSpeedStep;
  return FormatFixed(InUnit(mph, unit), 1, 1) + (unit == LengthUnit::kKilometers ? " kph" : " mph");
}

std::string DistanceText(double miles, LengthUnit unit) {
  return FormatFixed(InUnit(miles, unit), 1, 2) + (unit == LengthUnit::kKilometers ? " km" : " mi");
}

std::string PointDetails(const PointFacts& point, LengthUnit unit) {
  return DateTimeText(point.localTime) + "\n" + SpeedText(point.status, unit) + "\n" +
         DistanceText(point.miles, unit);
}

std::string PointText(const UnitLabel& label, const PointFacts& point, LengthUnit unit) {
  return std::to_string(label.number) + ": " + label.description + "\n" + PointDetails(point, unit);
}

std::string HoverText(const UnitLabel& label, const std::optional<PointFacts>& point, LengthUnit unit) {
  const std::string unitLine = "Unit #" + std::to_string(label.number) + " " + label.description;
  return point ? unitLine + "\n" + PointDetails(*point, unit) : unitLine;
}

}  // namespace pallomir
