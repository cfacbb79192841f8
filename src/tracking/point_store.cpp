#include "tracking/point_store.h"

#include <algorithm>
#include <cmath>

#include "map/projection.h"

namespace pallomir {
namespace {

constexpr std::int32_t kMaxLatitude = 90 * 600000;
constexpr std::int32_t kMaxLongitude = 180 * 600000;

bool Earlier(const DataPoint& a, const DataPoint& b) { return WithoutFlag(a.time) < WithoutFlag(b.time); }
bool SameTime(const DataPoint& a, const DataPoint& b) { return WithoutFlag(a.time) == WithoutFlag(b.time); }

bool IsUsable(const WireRecord& record) {
  return record.latitude >= -kMaxLatitude && record.latitude <= kMaxLatitude &&
         record.longitude >= -kMaxLongitude && record.longitude <= kMaxLongitude &&
         DecodePackedTime(record.time);
}

DataPoint Projected(const WireRecord& record) {
  return {record.time, LngToWorldX(record.longitude), LatToWorldY(record.latitude), record.status};
}

}  // namespace

std::optional<std::size_t> UnitTrack::NearestTo(Millis utc) const {
  if (points_.empty()) return std::nullopt;
  const auto time = [](const DataPoint& point) { return DecodePackedTime(point.time).value_or(0); };
  const auto after =
      std::lower_bound(points_.begin(), points_.end(), utc,
                       [&time](const DataPoint& point, Millis moment) { return time(point) < moment; });
  if (after == points_.begin()) return 0;
  const auto before = std::prev(after);
  const bool takeBefore = after == points_.end() || utc - time(*before) <= time(*after) - utc;
  return static_cast<std::size_t>((takeBefore ? before : after) - points_.begin());
}

void UnitTrack::Merge(std::span<const DataPoint> rows) {
  if (rows.empty()) return;
  const auto from = std::lower_bound(points_.begin(), points_.end(), rows.front(), Earlier);
  const auto keep = static_cast<std::size_t>(from - points_.begin());
  const std::vector<DataPoint> tail(from, points_.end());
  points_.resize(keep);
  const std::size_t atMost = keep + tail.size() + rows.size();
  if (atMost > points_.capacity()) points_.reserve(atMost + atMost / 8);
  // Takes the stored row of equal times, because it comes from the first range.
  std::set_union(tail.begin(), tail.end(), rows.begin(), rows.end(), std::back_inserter(points_), Earlier);
  miles_.reserve(points_.capacity());
  miles_.resize(points_.size());
  for (std::size_t j = keep; j < points_.size(); ++j) {
    if (j == 0) {
      miles_[0] = 0;
      continue;
    }
    const DataPoint& a = points_[j - 1];
    const DataPoint& b = points_[j];
    miles_[j] = miles_[j - 1] + GroundDistanceMiles(a.x, a.y, b.x, b.y);
  }
}

DecodedRecords DecodeRecords(ByteView records) {
  DecodedRecords decoded;
  const std::size_t count = records.size() / kRecordSize;
  decoded.rows.reserve(count);
  for (std::size_t j = count; j-- > 0;) {
    const WireRecord record = DecodeRecord(records, j * kRecordSize);
    if (IsUsable(record)) {
      decoded.rows.push_back(Projected(record));
    } else {
      ++decoded.leftOut;
    }
  }
  std::vector<DataPoint>& rows = decoded.rows;
  if (!std::is_sorted(rows.begin(), rows.end(), Earlier)) std::stable_sort(rows.begin(), rows.end(), Earlier);
  rows.erase(std::unique(rows.begin(), rows.end(), SameTime), rows.end());
  return decoded;
}

void PointStore::Reset(std::size_t enabledCount) {
  tracks_.clear();
  tracks_.resize(enabledCount);
}

bool PointStore::Merge(std::size_t k, std::span<const DataPoint> rows, WorldBox& box) {
  if (PointCount() + rows.size() > kMaxPoints) return false;
  box = BoxOf(rows, box);
  tracks_[k - 1].Merge(rows);
  return true;
}

std::size_t PointStore::PointCount() const {
  std::size_t count = 0;
  for (const UnitTrack& track : tracks_) count += track.Points().size();
  return count;
}

const DataPoint* PointStore::Newest() const {
  const DataPoint* newest = nullptr;
  for (const UnitTrack& track : tracks_) {
    if (track.Points().empty()) continue;
    const DataPoint& last = track.Points().back();
    if (!newest || Earlier(*newest, last)) newest = &last;
  }
  return newest;
}

std::optional<Millis> PointStore::LastDataTime(std::size_t k) const {
  const auto points = Track(k).Points();
  if (points.empty()) return std::nullopt;
  return DecodePackedTime(points.back().time);
}

}  // namespace pallomir
