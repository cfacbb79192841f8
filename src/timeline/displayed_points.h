#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "map/map_view.h"
#include "platform/local_clock.h"
#include "settings/choice.h"
#include "timeline/point_text.h"
#include "tracking/mobile_units.h"
#include "tracking/point_store.h"

namespace pallomir {

/// The points of the displayed units as the timeline and the marks over the map speak of them. Units are
/// named by k = 1, 2 ..., their points by their index from 0.
class DisplayedPoints {
 public:
  /// All arguments outlive this. `unitOfMeasure` is 0 for miles.
  DisplayedPoints(const PointStore& store, const UnitBook& units, const LocalClock& clock,
                  const Choice<int>& unitOfMeasure)
      : store_(store), units_(units), clock_(clock), unitOfMeasure_(unitOfMeasure) {}

  std::size_t UnitCount() const { return store_.UnitCount(); }
  const std::string& Description(std::size_t k) const { return units_.descriptions[k]; }
  std::span<const DataPoint> Points(std::size_t k) const { return store_.Track(k).Points(); }
  std::vector<std::span<const DataPoint>> Tracks() const;
  /// The box of unit k's points, of all for k = 0; without points a default one.
  WorldBox BoxOfUnit(std::size_t k) const;
  /// Null where there is no such unit or point: who asks may have heard of it before the points moved.
  const DataPoint* Find(std::size_t k, std::size_t index) const;
  /// The index of the point nearest to a local time.
  std::optional<std::size_t> NearestTo(std::size_t k, Millis local) const;

  /// The text over the map; the point has to be there.
  std::string TextOf(std::size_t k, std::size_t index) const;
  /// The text of the timeline's hover box; without details where the point is not there.
  std::string HoverTextOf(std::size_t k, std::size_t index) const;

  UnitLabel LabelOf(std::size_t k) const;
  /// The point has to be there.
  PointFacts FactsOf(std::size_t k, std::size_t index) const;
  /// That the user chose.
  LengthUnit Unit() const;

 private:
  const PointStore& store_;
  const UnitBook& units_;
  const LocalClock& clock_;
  const Choice<int>& unitOfMeasure_;
};

}  // namespace pallomir
