#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "journal/zone_crossing.h"

namespace pallomir {

/// All border crossings of one unit in the points that are loaded, in time order, and which of them count.
///
/// Flicker: three crossings of a zone's border one after the other, each within the limits of the one before,
/// are one, the first; so that a unit that wavers has entered (or left) once, or entered and left once,
/// whatever the number of its points. What counts does not depend on the parts in which the points came.
class UnitCrossings {
 public:
  explicit UnitCrossings(const FlickerLimits& limits) : limits_(limits) {}

  void Clear() { all_.clear(); }

  /// A stretch of time in which all that counts is `counting`.
  struct Stretch {
    Millis from = 0;
    Millis until = 0;  ///< included
    std::vector<ZoneCrossing> counting;
  };
  /// The crossings on the way from the point at `after` to the one at `until` are these now, in time order.
  /// Gives the stretch around it in which others may count than before.
  Stretch Replace(Millis after, Millis until, std::span<const ZoneCrossing> crossings);

 private:
  void KeepMarks(std::size_t begin, std::size_t end, std::vector<ZoneCrossing>& now) const;
  bool IsPauseBefore(std::size_t at) const;
  std::vector<ZoneCrossing> Counting(std::size_t begin, std::size_t end) const;
  bool IsWavering(const ZoneCrossing& before, const ZoneCrossing& now) const;

  FlickerLimits limits_;
  std::vector<ZoneCrossing> all_;
};

}  // namespace pallomir
