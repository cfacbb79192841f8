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

/// From `from` to `until`, both included, UTC. Empty if `until` is earlier than `from`.
struct TimeWindow {
  Millis from = 0;
  Millis until = 0;
};

/// The same window in packed times, both included.
struct PackedWindow {
  std::uint32_t first = 0;
  std::uint32_t last = 0;
};

/// The whole seconds of the window within the years 2000 to 2031, which packed times can hold. Nothing if
/// there are none.
std::optional<PackedWindow> PackWindow(TimeWindow window);

/// Whether the records are as a source must return them: strictly ascending in time, with the time's flag
/// clear.
bool IsStrictlyAscending(std::span<const WireRecord> records);

/// The part of `records` (ascending in time, flags clear) that lies in the window.
std::span<const WireRecord> RecordsInside(std::span<const WireRecord> records, PackedWindow window);

/// Where position records come from. Between two reads a reader remembers a time and nothing else, so the
/// source may grow meanwhile, and slow readers cost it nothing.
class PositionSource {
 public:
  virtual ~PositionSource() = default;

  /// Whether there is such a unit, with records or without. `unitId` may be any text.
  virtual bool Knows(std::string_view unitId) = 0;

  /// The oldest records of the window, at most `limit`, strictly ascending in time, with the time's flag
  /// clear. None for an unknown unit. What can't be read now gives no error but fewer records, never later
  /// ones in its place: the reader asks again later.
  virtual std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) = 0;
};

/// Two sources as one. Where both know a unit, `first` hides the unit of `second`.
class CombinedSource : public PositionSource {
 public:
  /// Both must outlive it.
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
