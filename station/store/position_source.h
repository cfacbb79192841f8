#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// From `from` to `until`, both included, UTC. Empty when `until` is the earlier one.
struct TimeWindow {
  Millis from = 0;
  Millis until = 0;
};

/// The same window in packed times, both included.
struct PackedWindow {
  std::uint32_t first = 0;
  std::uint32_t last = 0;
};

/// Cut to the years 2000 to 2031; nothing where no whole second lies inside.
std::optional<PackedWindow> PackWindow(TimeWindow window);

/// The part of `records` (ascending, flags clear) that lies in the window.
std::span<const WireRecord> RecordsInside(std::span<const WireRecord> records, PackedWindow window);

/// Where position reports come from. What a reader remembers between two reads is a time and nothing else, so
/// a source may grow in between, and a slow reader costs it nothing.
class PositionSource {
 public:
  virtual ~PositionSource() = default;

  virtual bool Knows(std::string_view unitId) = 0;

  /// The oldest records of the window, at most `limit`, strictly ascending in time, with the time's flag
  /// clear. None for an unknown unit.
  virtual std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) = 0;
};

/// The first known unit's answer wins: `first` hides a unit of the same ID in `second`.
class CombinedSource : public PositionSource {
 public:
  CombinedSource(PositionSource& first, PositionSource& second) : first_(first), second_(second) {}

  bool Knows(std::string_view unitId) override { return first_.Knows(unitId) || second_.Knows(unitId); }
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override {
    return (first_.Knows(unitId) ? first_ : second_).Read(unitId, window, limit);
  }

 private:
  PositionSource& first_;
  PositionSource& second_;
};

}  // namespace pallomir::station
