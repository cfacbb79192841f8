#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/data_point.h"
#include "timeline/tick_scale.h"
#include "timeline/time_window.h"

namespace pallomir {

/// What a data strip shows, per pixel column: the index of the last of the points that fall into the column,
/// or kNoPoint. A column with a point carries a mark, and the hover describes that point.
using ColumnTable = std::vector<std::int32_t>;
inline constexpr std::int32_t kNoPoint = -1;

/// The packed times at which the columns of a strip begin, and behind them the one at which the last column
/// ends: a point lies in column x if its time is at least element x and below element x + 1. Empty where the
/// window can't be shown. Local time is UTC minus `utcOffsetMinutes`.
std::vector<std::uint32_t> ColumnStarts(const TimeWindow& localWindow, int utcOffsetMinutes, int width);

/// The column table of points that ascend in time. Costs a search a column, however many points there are.
ColumnTable PointsByColumn(std::span<const DataPoint> points, std::span<const std::uint32_t> columnStarts);

/// How many points all those columns have together.
std::size_t PointsInColumns(std::span<const DataPoint> points, std::span<const std::uint32_t> columnStarts);

/// A row of the timeline: one enabled unit.
struct TimelineRow {
  std::string name;            ///< what the unit is called, for those who can't see its colour
  std::uint32_t colour = 0;    ///< 0xRRGGBB
  ColumnTable columns;         ///< as many as the picture is wide, or none
  std::size_t pointCount = 0;  ///< in the window
};

/// All that the timeline strip shows.
struct TimelinePicture {
  int width = 0;  ///< of the scale and of each row, pixels
  std::optional<TickScale> scale;
  std::vector<TimelineRow> rows;
  TimeWindow window;  ///< local
};

/// A unit as the timeline draws it.
struct TimelineUnit {
  std::string name;
  std::uint32_t colour = 0;
  std::span<const DataPoint> points;
};

/// The whole picture for a strip of `width` pixels.
TimelinePicture DrawTimeline(const TimeWindow& localWindow, int utcOffsetMinutes, int width,
                             std::span<const TimelineUnit> units);

/// The point that a column of a row (1, 2 ...) describes, an index into its unit's points; kNoPoint for a
/// column without one and for what lies outside the picture.
std::int32_t PointUnder(const TimelinePicture& picture, int row, int column);

}  // namespace pallomir
