#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "base/civil_time.h"
#include "base/data_point.h"
#include "map/map_view.h"
#include "tracking/packets.h"

namespace pallomir {

/// The points of one unit: ascending in time, no two equal times, with the miles travelled up to each. Point
/// 1 of the reports is element 0 here.
class UnitTrack {
 public:
  std::span<const DataPoint> Points() const { return points_; }
  std::span<const double> Miles() const { return miles_; }

  /// Element of the point nearest in time; of two as near the earlier one. Nothing in an empty track.
  std::optional<std::size_t> NearestTo(Millis utc) const;

  /// Merges rows that ascend in time without equal times. A time that is stored already keeps its stored row.
  /// Costs what lies behind the first new row.
  void Merge(std::span<const DataPoint> rows);

 private:
  std::vector<DataPoint> points_;
  std::vector<double> miles_;
};

/// What became of the records of a packet.
struct DecodedRecords {
  std::vector<DataPoint> rows;  ///< ascending in time, no two equal times
  std::size_t leftOut = 0;      ///< impossible date, or a position outside 90 and 180 degrees
};

/// The records of a packet (newest first, 14 bytes each) as rows for the store. Of equal times the first row
/// stays; records that do not descend are put in order.
DecodedRecords DecodeRecords(ByteView records);

/// All points of the enabled units, by their position k = 1, 2 ...
class PointStore {
 public:
  /// Beyond this many points the rest of a stream is left out: some two years of one a second, 1.5 GB.
  static constexpr std::size_t kMaxPoints = 64'000'000;

  /// Empties the store and makes room for `enabledCount` units.
  void Reset(std::size_t enabledCount);

  /// Puts the rows into unit k's track and widens `box` by them. False when the store is full.
  bool Merge(std::size_t k, std::span<const DataPoint> rows, WorldBox& box);

  std::size_t UnitCount() const { return tracks_.size(); }
  const UnitTrack& Track(std::size_t k) const { return tracks_[k - 1]; }
  std::size_t PointCount() const;

  /// The newest point of all units; of equal times the first unit's. Null when there is none.
  const DataPoint* Newest() const;

  /// UTC time of unit k's newest point.
  std::optional<Millis> LastDataTime(std::size_t k) const;

 private:
  std::vector<UnitTrack> tracks_;
};

}  // namespace pallomir
