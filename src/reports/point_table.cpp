#include "reports/point_table.h"

#include <algorithm>
#include <array>

#include "base/number_format.h"
#include "base/packed_time.h"

namespace pallomir {
namespace {

// At less than this a heading means nothing. The text counts.
constexpr double kLeastMovingSpeed = 2.0;
constexpr int kFirstStatusPicture = 17;
constexpr int kStatusShift = 10;

PointTableRow RowOf(const DisplayedPoints& points, std::size_t k, std::size_t index, double distance,
                    double speedFactor) {
  const PointFacts facts = points.FactsOf(k, index);
  PointTableRow row;
  row.k = k;
  row.index = index;
  row.txtIdx = std::to_string(index + 1);
  row.txtDst = FormatFixed(distance, 1, 1);
  row.txtUnt = std::to_string(points.LabelOf(k).number);
  row.txtTim = DateTimeText(facts.localTime);
  row.txtSpd = FormatFixed((facts.status & kStatusSpeedMask) * kMphPerSpeedStep * speedFactor, 1, 1);
  const auto sector = static_cast<int>(facts.status >> kStatusHeadingShift & 15);
  if (ParseNumber(row.txtSpd).value_or(0) >= kLeastMovingSpeed) row.imgDir = sector + 1;
  row.imgAPt = kFirstStatusPicture + static_cast<int>(facts.status >> kStatusShift & 3);
  return row;
}

}  // namespace

PointTable NearbyTable(const DisplayedPoints& points, std::span<const NearbyPoint> nearest) {
  PointTable table;
  table.distanceUnit = "pixels";
  for (const auto& [k, index, pixels] : nearest) table.rows.push_back(RowOf(points, k, index, pixels, 1));
  return table;
}

// An entry names its point by its time: its number may have become another one's.
PointTable FastestTable(const DisplayedPoints& points, const FastestPoints& fastest) {
  const bool isMetric = points.Unit() == LengthUnit::kKilometers;
  const double factor = isMetric ? kKilometersPerMile : 1;
  PointTable table;
  table.distanceUnit = isMetric ? "km" : "mi";
  table.speedUnit = isMetric ? "kph" : "mph";
  for (const FastPoint& entry : fastest.Entries()) {
    if (entry.unit == 0 || entry.unit > points.UnitCount() || entry.speed == 0) continue;
    const auto track = points.Points(entry.unit);
    const auto at = std::ranges::lower_bound(track, entry.time, {},
                                             [](const DataPoint& point) { return WithoutFlag(point.time); });
    if (at == track.end() || WithoutFlag(at->time) != entry.time) continue;
    const auto index = static_cast<std::size_t>(at - track.begin());
    const double miles = points.FactsOf(entry.unit, index).miles;
    table.rows.push_back(RowOf(points, entry.unit, index, miles * factor, factor));
  }
  return table;
}

std::string HeadingName(int imgDir) {
  static constexpr std::array kNames = {"",  "N",   "NNE", "NE",  "ENE", "E",   "ESE", "SE", "SSE",
                                        "S", "SSW", "SW",  "WSW", "W",   "WNW", "NW",  "NNW"};
  return kNames.at(static_cast<std::size_t>(imgDir));
}

std::string StatusName(int imgAPt) {
  static constexpr std::array kNames = {"", "Received", "Not received", "Received and not received"};
  return kNames.at(static_cast<std::size_t>(imgAPt - kFirstStatusPicture));
}

std::string SummaryOf(const PointTable& table, const PointTableRow& row) {
  std::string text = "Point " + row.txtIdx + " of unit " + row.txtUnt + ", " + row.txtDst + ' ' +
                     table.distanceUnit + ", " + row.txtTim + ", " + row.txtSpd + ' ' + table.speedUnit;
  if (row.imgDir > 0) text += ", " + HeadingName(row.imgDir);
  if (const std::string status = StatusName(row.imgAPt); !status.empty()) text += ", " + status;
  return text;
}

std::string TextOf(const PointTable& table, char separator, const char* lineEnd) {
  std::string text;
  const auto add = [&](std::array<std::string, 7> columns) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) text += separator;
      text += columns[i];
    }
    text += lineEnd;
  };
  add({"Index", std::string("Distance (") + table.distanceUnit + ')', "Unit", "Time",
       std::string("Speed (") + table.speedUnit + ')', "Heading", "Status"});
  for (const PointTableRow& row : table.rows)
    add({row.txtIdx, row.txtDst, row.txtUnt, row.txtTim, row.txtSpd, HeadingName(row.imgDir),
         StatusName(row.imgAPt)});
  return text;
}

}  // namespace pallomir
