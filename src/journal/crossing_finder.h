#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "journal/unit_crossings.h"
#include "journal/zone_borders.h"
#include "journal/zone_schedule.h"
#include "platform/local_clock.h"
#include "tracking/point_store.h"

namespace pallomir {

/// Finds where the loaded points of the units go over the borders of the zones, part by part. The first point
/// of a unit says where it is and makes no event; nor does a change of the zones: what follows is found in
/// the new ones.
class CrossingFinder {
 public:
  /// Both outlive the finder.
  CrossingFinder(const PointStore& points, const LocalClock& clock, const FlickerLimits& limits)
      : points_(points), clock_(clock), limits_(limits) {}

  void SetZones(const ZoneTree& zones);
  /// The points are gone, and the units may be others.
  void Forget() { units_.clear(); }
  /// Points of unit k came, the earliest at this packed time without flag; whether they were known is all the
  /// same.
  void PointsCame(std::size_t k, std::uint32_t earliest);

  bool HasWork() const;
  struct Found {
    std::size_t k = 0;
    UnitCrossings::Stretch stretch;
  };
  /// Looks at up to so many points of one unit. Nothing when there is nothing to do.
  std::optional<Found> Work(std::size_t mostPoints);

 private:
  struct Unit {
    explicit Unit(const FlickerLimits& limits) : crossings(limits) {}
    std::uint32_t seen = 0;             // packed time of the last point that was looked at; 0: none
    std::uint32_t lateUntil = 0;        // ways that end up to here were looked at before
    std::uint32_t earliest = kNothing;  // of those that came since
    UnitCrossings crossings;
  };
  static constexpr std::uint32_t kNothing = 0xFFFFFFFF;

  Unit& UnitAt(std::size_t k);
  std::size_t BeginOf(Unit& unit, std::span<const DataPoint> points) const;
  std::vector<ZoneCrossing> Cross(const Unit& unit, std::span<const DataPoint> points) const;
  void AddWay(const DataPoint& from, const DataPoint& to, ZoneOrdinal& zone, bool isLate,
              std::vector<ZoneCrossing>& found) const;
  void AddPassage(ZoneOrdinal from, ZoneOrdinal into, const ZoneCrossing& what,
                  std::vector<ZoneCrossing>& found) const;
  std::vector<ZoneOrdinal> PathTo(ZoneOrdinal zone) const;

  const PointStore& points_;
  const LocalClock& clock_;
  FlickerLimits limits_;
  std::unique_ptr<ZoneBorders> borders_;
  std::vector<ZoneOrdinal> parents_;
  std::vector<ZoneSchedule> schedules_;
  std::vector<Unit> units_;
};

}  // namespace pallomir
