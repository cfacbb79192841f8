#include "tracking/point_store.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <functional>

#include "map/bulk_projection.h"
#include "tracking/record_rows.h"
#include "tracking/travelled_miles.h"

namespace pallomir {
namespace {

constexpr std::int32_t kMaxLatitude = 90 * 600000;
constexpr std::int32_t kMaxLongitude = 180 * 600000;

bool Earlier(const DataPoint& a, const DataPoint& b) { return WithoutFlag(a.time) < WithoutFlag(b.time); }
bool SameTime(const DataPoint& a, const DataPoint& b) { return WithoutFlag(a.time) == WithoutFlag(b.time); }

bool HasUsablePosition(const DataPoint& wireRow) {
  constexpr auto isWithin = [](std::int32_t value, std::int32_t limit) {
    return static_cast<std::uint32_t>(value) + static_cast<std::uint32_t>(limit) <=
           2 * static_cast<std::uint32_t>(limit);
  };
  return isWithin(wireRow.x, kMaxLatitude) && isWithin(wireRow.y, kMaxLongitude);
}

bool IsUsable(const DataPoint& wireRow) {
  return HasUsablePosition(wireRow) && IsPossiblePackedTime(wireRow.time);
}

// Whether nothing has to be left out or put in order, as it should be: no branch but for a new day.
bool IsInOrder(std::span<const DataPoint> wireRows) {
  if (wireRows.empty()) return true;
  bool inOrder = IsUsable(wireRows.front());
  std::uint32_t before = WithoutFlag(wireRows.front().time);
  for (const DataPoint& row : wireRows.subspan(1)) {
    const std::uint32_t time = WithoutFlag(row.time);
    inOrder &= time > before;
    inOrder &= HasPossibleTimeOfDay(time);
    inOrder &= HasUsablePosition(row);
    if (!IsSameDay(time, before)) inOrder &= IsPossiblePackedTime(time);
    before = time;
  }
  return inOrder;
}

// Merges `fresh` into the `count` rows at `stored`, behind which there is room for it, and returns their new
// number. Both ascend without equal times; of equal times the stored row stays.
std::size_t MergeInto(DataPoint* stored, std::size_t count, std::span<const DataPoint> fresh) {
  // The stored rows make room in front of them: the output can never catch up with them.
  DataPoint* out = stored;
  const DataPoint* a = std::copy_backward(stored, stored + count, stored + count + fresh.size());
  const DataPoint* const aEnd = a + count;
  const DataPoint* b = fresh.data();
  const DataPoint* const bEnd = b + fresh.size();
  while (a != aEnd && b != bEnd) {
    // No branch on the order, which is anything when streams interleave; the compiler makes one of a plain
    // choice between the two.
    const std::uint32_t aTime = WithoutFlag(a->time);
    const std::uint32_t bTime = WithoutFlag(b->time);
    const bool takeA = aTime <= bTime;
    const auto aAddress = reinterpret_cast<std::uintptr_t>(a);
    const auto bAddress = reinterpret_cast<std::uintptr_t>(b);
    const std::uintptr_t taken = bAddress ^ ((aAddress ^ bAddress) & -std::uintptr_t{takeA});
    *out++ = *reinterpret_cast<const DataPoint*>(taken);
    a += takeA;
    b += bTime <= aTime;
  }
  out = std::copy(b, bEnd, out);
  if (out != a)
    out = std::copy(a, aEnd, out);
  else
    out += aEnd - a;
  return static_cast<std::size_t>(out - stored);
}

// The store's order: each row later than the one before.
[[maybe_unused]] bool Ascends(std::span<const DataPoint> rows) {
  return std::ranges::adjacent_find(rows, std::not_fn(Earlier)) == rows.end();
}

}  // namespace

std::optional<std::size_t> UnitTrack::NearestTo(Millis utc) const {
  const std::span<const DataPoint> points = Points();
  if (points.empty()) return std::nullopt;
  const auto time = [](const DataPoint& point) { return DecodePackedTime(point.time).value_or(0); };
  const auto after =
      std::lower_bound(points.begin(), points.end(), utc,
                       [&time](const DataPoint& point, Millis moment) { return time(point) < moment; });
  if (after == points.begin()) return 0;
  const auto before = std::prev(after);
  const bool takeBefore = after == points.end() || utc - time(*before) <= time(*after) - utc;
  return static_cast<std::size_t>((takeBefore ? before : after) - points.begin());
}

void UnitTrack::Merge(std::span<const DataPoint> rows) {
  Settle();
  Place(rows);
}

void UnitTrack::Gather(std::span<const DataPoint> rows) {
  if (rows.empty()) return;
  assert(Ascends(rows));
  const bool isLatest = points_.Size() == 0 || Earlier(points_.View().back(), rows.front());
  const bool waits = !late_.empty() && !Earlier(latestWaiting_, rows.front());
  if (isLatest && !waits) return Place(rows);
  if (late_.empty() || Earlier(latestWaiting_, rows.back())) latestWaiting_ = rows.back();
  lateRuns_.push_back(late_.size());
  late_.insert(late_.end(), rows.begin(), rows.end());
  JoinLateRuns(false);
}

void UnitTrack::Settle() {
  if (late_.empty()) return;
  JoinLateRuns(true);
  Place(late_);
  DropLate();
}

// Merges the rows into the points: those earlier than the first row stay as they are.
void UnitTrack::Place(std::span<const DataPoint> rows) {
  if (rows.empty()) return;
  assert(Ascends(rows));
  const auto points = Points();
  auto from = points.end();
  if (!points.empty() && !Earlier(points.back(), rows.front()))
    from = std::lower_bound(points.begin(), points.end(), rows.front(), Earlier);
  const auto keep = static_cast<std::size_t>(from - points.begin());
  const std::size_t behind = points.size() - keep;
  points_.Resize(points.size() + rows.size());
  const std::size_t merged = MergeInto(points_.Data() + keep, behind, rows);
  points_.Resize(keep + merged);
  if (merged < behind + rows.size()) points_.TrimReserve();  // of the room for times that are stored
  miles_.Resize(points_.Size());
  FillTravelledMiles(Points(), miles_.Data(), keep);
  assert(Ascends(Points().subspan(keep > 0 ? keep - 1 : 0)));
}

// Joins the last runs, all of them or until each run is less than half as long as the one before: so there
// are few, and a row is joined seldom, whatever comes in whatever order.
void UnitTrack::JoinLateRuns(bool all) {
  while (lateRuns_.size() > 1) {
    const std::size_t last = lateRuns_.back();
    const std::size_t before = lateRuns_[lateRuns_.size() - 2];
    if (!all && last - before > 2 * (late_.size() - last)) return;
    const std::vector<DataPoint> fresh(late_.begin() + static_cast<std::ptrdiff_t>(last), late_.end());
    late_.resize(before + MergeInto(late_.data() + before, last - before, fresh));
    lateRuns_.pop_back();
  }
}

void UnitTrack::Clear() {
  constexpr std::size_t kKept = std::size_t{4} << 20;
  points_.Clear(kKept);
  miles_.Clear(kKept);
  DropLate();
}

// With their memory, which an assigned {} would leave them.
void UnitTrack::DropLate() {
  late_ = std::vector<DataPoint>();
  lateRuns_ = std::vector<std::size_t>();
}

DecodedRecords DecodeRecords(ByteView records) {
  DecodedRecords decoded;
  std::vector<DataPoint>& rows = decoded.rows;
  rows.resize(records.size() / kRecordSize);
  RowsFromRecords(records, rows);
  if (!IsInOrder(rows)) {
    decoded.leftOut = std::erase_if(rows, [](const DataPoint& row) { return !IsUsable(row); });
    std::stable_sort(rows.begin(), rows.end(), Earlier);
    rows.erase(std::unique(rows.begin(), rows.end(), SameTime), rows.end());
  }
  ProjectPositions(rows);
  return decoded;
}

void PointStore::Reset(std::size_t enabledCount) {
  tracks_.resize(enabledCount);
  for (UnitTrack& track : tracks_) track.Clear();
  pointCount_ = 0;
}

bool PointStore::Merge(std::size_t k, std::span<const DataPoint> rows) {
  if (!Gather(k, rows)) return false;
  Settle(tracks_[k - 1]);
  return true;
}

bool PointStore::Gather(std::size_t k, std::span<const DataPoint> rows) {
  if (pointCount_ + rows.size() > kMaxPoints) return false;
  UnitTrack& track = tracks_[k - 1];
  pointCount_ -= track.HeldCount();
  track.Gather(rows);
  pointCount_ += track.HeldCount();
  return true;
}

void PointStore::Settle() {
  for (UnitTrack& track : tracks_) Settle(track);
}

void PointStore::Settle(UnitTrack& track) {
  pointCount_ -= track.HeldCount();
  track.Settle();
  pointCount_ += track.HeldCount();
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

}  // namespace pallomir
