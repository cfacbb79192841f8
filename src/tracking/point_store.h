#pragma once

#include <cassert>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "base/civil_time.h"
#include "base/data_point.h"
#include "base/growing_array.h"
#include "tracking/packets.h"

namespace pallomir {

/// The points of one unit: ascending in time, no two equal times, with the miles travelled up to each. Point
/// 1 of the reports is element 0 here.
class UnitTrack {
 public:
  std::span<const DataPoint> Points() const { return points_.View(); }
  std::span<const double> Miles() const { return miles_.View(); }

  /// Element of the point nearest in time; of two as near the earlier one. Nothing in an empty track.
  std::optional<std::size_t> NearestTo(Millis utc) const;

  /// Merges rows that ascend in time without equal times. A time that is stored already keeps its stored row.
  /// Costs what lies behind the first new row.
  void Merge(std::span<const DataPoint> rows);

  /// The same in two steps, for batches of packets: rows later than all others are stored at once, the rest
  /// waits in a list of its own, so that a batch of late packets goes through the track once and not once for
  /// each. What waits is not among the points until Settle.
  void Gather(std::span<const DataPoint> rows);
  void Settle();

  /// Empties the track. Memory stays for some 200,000 points, because a reload brings the same again.
  void Clear();

  /// Points and the rows that wait to become some, those included whose time will turn out to be stored.
  std::size_t HeldCount() const { return points_.Size() + late_.size(); }

  /// Bytes of memory that are held for points and miles.
  std::size_t ReservedBytes() const {
    return (points_.Capacity() + late_.capacity()) * sizeof(DataPoint) + miles_.Capacity() * sizeof(double);
  }

 private:
  void Place(std::span<const DataPoint> rows);
  void JoinLateRuns(bool all);
  void DropLate();

  GrowingArray<DataPoint> points_;
  GrowingArray<double> miles_;
  // Late rows: one run behind the other, each ascending, by when they came. `lateRuns_` are their beginnings.
  std::vector<DataPoint> late_;
  std::vector<std::size_t> lateRuns_;
  DataPoint latestWaiting_;
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

  /// Puts the rows into unit k's track. False when the store is full.
  bool Merge(std::size_t k, std::span<const DataPoint> rows);

  /// The same for the packets of a batch: what comes late waits for Settle, see UnitTrack. Until then every
  /// row counts as a point.
  bool Gather(std::size_t k, std::span<const DataPoint> rows);
  void Settle();

  std::size_t UnitCount() const { return tracks_.size(); }
  /// k from 1 to UnitCount().
  const UnitTrack& Track(std::size_t k) const {
    assert(k >= 1 && k <= tracks_.size());
    return tracks_[k - 1];
  }
  std::size_t PointCount() const { return pointCount_; }

  /// The newest point of all units; of equal times the first unit's. Null when there is none.
  const DataPoint* Newest() const;

 private:
  void Settle(UnitTrack& track);

  std::vector<UnitTrack> tracks_;
  std::size_t pointCount_ = 0;
};

}  // namespace pallomir
