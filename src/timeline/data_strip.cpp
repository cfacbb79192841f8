#include "timeline/data_strip.h"

#include <algorithm>

namespace pallomir {
namespace {

constexpr std::uint32_t kPastAllTimes = kPackedTimeFlag;

// The packed form of the first whole second at or after `utc`; moments that packed time can't name become 0
// before its years and kPastAllTimes behind them.
std::uint32_t FirstPackedFrom(Millis utc) {
  static const Millis kFirst = ToMillis({2000, 1, 1});
  if (utc <= kFirst) return 0;
  return EncodePackedTime(utc + kSecond - 1).value_or(kPastAllTimes);
}

// The index, from `begin` on, of the first point at or after a packed time.
std::size_t FirstPoint(std::span<const DataPoint> points, std::size_t begin, std::uint32_t packed) {
  const auto found = std::lower_bound(
      points.begin() + static_cast<std::ptrdiff_t>(begin), points.end(), packed,
      [](const DataPoint& point, std::uint32_t time) { return WithoutFlag(point.time) < time; });
  return static_cast<std::size_t>(found - points.begin());
}

}  // namespace

std::vector<std::uint32_t> ColumnStarts(const TimeWindow& localWindow, int utcOffsetMinutes, int width) {
  std::vector<std::uint32_t> starts;
  if (!IsDrawable(localWindow, width)) return starts;
  starts.reserve(static_cast<std::size_t>(width) + 1);
  const Millis startUtc = ToUtc(localWindow.start, utcOffsetMinutes);
  // The first millisecond of column x is x · length / width, rounded up.
  for (int x = 0; x <= width; ++x)
    starts.push_back(FirstPackedFrom(startUtc + (x * localWindow.Length() + width - 1) / width));
  return starts;
}

ColumnTable PointsByColumn(std::span<const DataPoint> points, std::span<const std::uint32_t> columnStarts) {
  ColumnTable columns;
  if (columnStarts.empty()) return columns;
  columns.reserve(columnStarts.size() - 1);
  std::size_t first = FirstPoint(points, 0, columnStarts.front());
  for (const std::uint32_t end : columnStarts.subspan(1)) {
    const bool hasPoint = first < points.size() && WithoutFlag(points[first].time) < end;
    if (hasPoint) first = FirstPoint(points, first, end);
    columns.push_back(hasPoint ? static_cast<std::int32_t>(first) - 1 : kNoPoint);
  }
  return columns;
}

std::size_t PointsInColumns(std::span<const DataPoint> points, std::span<const std::uint32_t> columnStarts) {
  if (columnStarts.empty()) return 0;
  const std::size_t first = FirstPoint(points, 0, columnStarts.front());
  return FirstPoint(points, first, columnStarts.back()) - first;
}

TimelinePicture DrawTimeline(const TimeWindow& localWindow, int utcOffsetMinutes, int width,
                             std::span<const TimelineUnit> units) {
  TimelinePicture picture{width, BuildTickScale(localWindow, width), {}, localWindow};
  const std::vector<std::uint32_t> starts = ColumnStarts(localWindow, utcOffsetMinutes, width);
  picture.rows.reserve(units.size());
  for (const TimelineUnit& unit : units)
    picture.rows.push_back(
        {unit.name, unit.colour, PointsByColumn(unit.points, starts), PointsInColumns(unit.points, starts)});
  return picture;
}

std::int32_t PointUnder(const TimelinePicture& picture, int row, int column) {
  if (row < 1 || static_cast<std::size_t>(row) > picture.rows.size()) return kNoPoint;
  const ColumnTable& columns = picture.rows[static_cast<std::size_t>(row) - 1].columns;
  if (column < 0 || static_cast<std::size_t>(column) >= columns.size()) return kNoPoint;
  return columns[static_cast<std::size_t>(column)];
}

}  // namespace pallomir
