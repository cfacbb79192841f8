#include "station/import/track_records.h"

#include <algorithm>
#include <cassert>

#include "base/packed_time.h"
#include "station/store/position_source.h"

namespace pallomir::station {
namespace {

// Neighbours further away in time say nothing about the speed at a point.
constexpr Millis kMaxNeighbourGap = 10 * kMinute;

// Between points closer than this the direction is noise.
constexpr double kMinHeadingMeters = 3;

// Records have whole seconds. The nearest is taken, because devices that report once a second often do so a
// few milliseconds before or after it.
Millis RecordTime(Millis utc) {
  const Millis nearest = utc + kSecond / 2;
  return nearest - (nearest % kSecond + kSecond) % kSecond;
}

bool IsInRange(Millis utc) { return EncodePackedTime(RecordTime(utc)).has_value(); }

bool AreNeighbours(const TrackPoint& a, const TrackPoint& b) {
  return a.segment == b.segment && b.utc - a.utc <= kMaxNeighbourGap;
}

struct Motion {
  double speed = 0;
  double heading = 0;
};

// From the point before to the point after, or from or to the point itself if one of them is missing.
Motion MotionAt(const std::vector<TrackPoint>& points, std::size_t i, double previousHeading) {
  const std::size_t before = i > 0 && AreNeighbours(points[i - 1], points[i]) ? i - 1 : i;
  const std::size_t after = i + 1 < points.size() && AreNeighbours(points[i], points[i + 1]) ? i + 1 : i;
  const TrackPoint &from = points[before], &to = points[after];
  const double meters = GroundDistance(from.place, to.place);
  Motion motion{0, previousHeading};
  if (to.utc > from.utc) motion.speed = meters * kSecond / static_cast<double>(to.utc - from.utc);
  if (meters >= kMinHeadingMeters) motion.heading = Bearing(from.place, to.place);
  return motion;
}

std::size_t CountOutOfOrder(const std::vector<TrackPoint>& points) {
  std::size_t count = 0;
  for (std::size_t i = 1; i < points.size(); ++i) count += points[i].utc < points[i - 1].utc ? 1 : 0;
  return count;
}

}  // namespace

Millis ShiftToDay(const std::vector<TrackPoint>& points, Millis today) {
  std::optional<Millis> last;
  for (const TrackPoint& point : points)
    if (IsInRange(point.utc)) last = std::max(last.value_or(point.utc), point.utc);
  return last ? today - WholeDay(*last) : 0;
}

TrackRecords MakeRecords(std::vector<TrackPoint> points, Millis shift, LeftOut& leftOut) {
  leftOut.yearOutOfRange += std::erase_if(points, [shift](const TrackPoint& point) {
    return !IsInRange(point.utc) || !IsInRange(point.utc + shift);
  });
  TrackRecords result;
  result.outOfOrder = CountOutOfOrder(points);
  std::ranges::stable_sort(points, {}, &TrackPoint::utc);
  const auto sameSecond = [](const TrackPoint& a, const TrackPoint& b) {
    return RecordTime(a.utc) == RecordTime(b.utc);
  };
  const auto doubled = std::unique(points.begin(), points.end(), sameSecond);
  leftOut.sameSecond += static_cast<std::size_t>(points.end() - doubled);
  points.erase(doubled, points.end());

  double heading = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const TrackPoint& point = points[i];
    const Motion motion = MotionAt(points, i, heading);
    heading = point.course.value_or(motion.heading);
    result.records.push_back({EncodePackedTime(RecordTime(point.utc + shift)).value_or(0),
                              PositionUnits(point.place.latitude), PositionUnits(point.place.longitude),
                              StatusWord(point.speed.value_or(motion.speed), heading)});
  }
  assert(IsStrictlyAscending(result.records));
  return result;
}

}  // namespace pallomir::station
