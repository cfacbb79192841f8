#include "timeline/displayed_points.h"

#include "base/packed_time.h"

namespace pallomir {

std::vector<std::span<const DataPoint>> DisplayedPoints::Tracks() const {
  std::vector<std::span<const DataPoint>> tracks;
  for (std::size_t k = 1; k <= UnitCount(); ++k) tracks.push_back(Points(k));
  return tracks;
}

WorldBox DisplayedPoints::BoxOfUnit(std::size_t k) const {
  WorldBox box;
  for (std::size_t unit = 1; unit <= UnitCount(); ++unit) {
    if (k == 0 || unit == k) box = BoxOf(Points(unit), box);
  }
  return box.IsEmpty() ? DefaultBox() : box;
}

const DataPoint* DisplayedPoints::Find(std::size_t k, std::size_t index) const {
  if (k == 0 || k > UnitCount() || index >= Points(k).size()) return nullptr;
  return &Points(k)[index];
}

std::optional<std::size_t> DisplayedPoints::NearestTo(std::size_t k, Millis local) const {
  return store_.Track(k).NearestTo(clock_.ToUtc(local));
}

std::string DisplayedPoints::TextOf(std::size_t k, std::size_t index) const {
  return PointText(LabelOf(k), FactsOf(k, index), Unit());
}

std::string DisplayedPoints::HoverTextOf(std::size_t k, std::size_t index) const {
  return HoverText(LabelOf(k), Find(k, index) ? std::optional(FactsOf(k, index)) : std::nullopt, Unit());
}

// The number is the one that the digit keys name.
UnitLabel DisplayedPoints::LabelOf(std::size_t k) const {
  return {units_.enabledToList[k], units_.descriptions[k]};
}

PointFacts DisplayedPoints::FactsOf(std::size_t k, std::size_t index) const {
  const DataPoint& point = Points(k)[index];
  const Millis utc = DecodePackedTime(point.time).value_or(0);
  return {clock_.ToLocal(utc), point.status, store_.Track(k).Miles()[index]};
}

LengthUnit DisplayedPoints::Unit() const {
  return unitOfMeasure_.Value() == 0 ? LengthUnit::kMiles : LengthUnit::kKilometers;
}

}  // namespace pallomir
