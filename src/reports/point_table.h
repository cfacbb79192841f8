#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "map/tile_renderer.h"
#include "reports/nearby_points.h"
#include "timeline/displayed_points.h"

namespace pallomir {

/// A data point as the tables show it.
struct PointTableRow {
  std::size_t k = 0;      ///< unit and point, as DisplayedPoints counts
  std::size_t index = 0;  ///< from 0
  std::string txtIdx;     ///< the point's number within its unit, from 1
  std::string txtDst;     ///< "12.3"
  std::string txtUnt;     ///< the unit's number, as its menu entry and the digit keys count
  std::string txtTim;     ///< "11/22/26 03:04:05 PM", local
  std::string txtSpd;     ///< "34.5"
  int imgDir = 0;         ///< picture of the heading: 1 north, then clockwise to 16; 0 for one that stands
  int imgAPt = 17;        ///< of the status: 17 none, 18 received, 19 not received, 20 both
};

/// What a table's window shows.
struct PointTable {
  std::vector<PointTableRow> rows;
  std::string emptyNote;          ///< why there are no rows
  const char* distanceUnit = "";  ///< of the distances and the speeds, for who has the rows read out
  const char* speedUnit = "mph";
  bool isOnTheLeft = false;  ///< where the window stands: what it is about lies in the map's other half
};

/// The points near a place. Distances are pixels, speeds miles an hour.
PointTable NearbyTable(const DisplayedPoints& points, std::span<const NearbyPoint> nearest);

/// The fastest points of a drawing, as far as they are still there; those that stood are left out. The
/// distance is the one travelled by then; it and the speed are in the chosen unit.
PointTable FastestTable(const DisplayedPoints& points, const FastestPoints& fastest);

/// "NNE" for 2; empty for 0.
std::string HeadingName(int imgDir);
/// What the status picture says; empty for 17.
std::string StatusName(int imgAPt);
/// All that a row says, as a sentence.
std::string SummaryOf(const PointTable& table, const PointTableRow& row);

/// A heading line and a line for each row. A comma separates the columns of a CSV file, a tab those of the
/// clipboard; no text holds either.
std::string TextOf(const PointTable& table, char separator, const char* lineEnd);

}  // namespace pallomir
