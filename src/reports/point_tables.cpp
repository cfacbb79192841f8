#include "reports/point_tables.h"

#include <cstdlib>
#include <utility>

namespace pallomir {

PointTables::PointTables(PointTableView& view, const DisplayedPoints& points, const MapView& map,
                         MapMarks& marks, ClickedAddress& address, Host host)
    : view_(view), points_(points), map_(map), marks_(marks), address_(address), host_(std::move(host)) {}

void PointTables::OpenNearby(std::optional<WorldPoint> clicked) {
  Close();
  marks_.HidePointMarker();
  const auto tracks = points_.Tracks();
  PointTable table;
  if (clicked) table = NearbyTable(points_, nearby_.Find(tracks, *clicked, map_.UnitsPerPixel));
  table.emptyNote = clicked ? "no point within 50 pixels" : "no place has been right-clicked";
  table.isOnTheLeft = clicked && clicked->x > map_.CentreX;
  Show(std::move(table));
  address_.Ask(this, [this](const std::string& address) {
    if (table_) view_.ShowAddress(address);
  });
}

void PointTables::OpenFastest() {
  Close();
  marks_.HidePointMarker();
  isFastestWanted_ = host_.isDrawing();
  if (isFastestWanted_) return;
  PointTable table = FastestTable(points_, host_.fastest());
  table.emptyNote = "no moving point in this part of the map";
  Show(std::move(table));
}

void PointTables::OnTilesDrawn() {
  if (isFastestWanted_) OpenFastest();
}

bool PointTables::Close() {
  const bool wasWanted = std::exchange(isFastestWanted_, false);
  if (!table_) return wasWanted;
  table_.reset();
  address_.Forget(this);
  view_.ClosePointTable();
  marks_.Unmark(std::exchange(centre_, std::nullopt));
  return true;
}

void PointTables::OnPointsMove() {
  OnPointsGrow();
  if (table_) Close();
}

void PointTables::OnViewMoved() {
  const auto isAt = [this](std::int64_t shown, std::int64_t wanted) {
    return std::abs(shown - wanted) <= centreScale_;  // the page rounds to its pixels
  };
  const bool isOwnPan = centre_ && map_.UnitsPerPixel == centreScale_ && isAt(map_.CentreX, centre_->x) &&
                        isAt(map_.CentreY, centre_->y);
  if (table_ && !isOwnPan) Close();
}

void PointTables::Show(PointTable table) {
  table_ = std::move(table);
  PointTableView::Actions actions;
  actions.hovered = [this](std::size_t row) { Mark(row); };
  actions.chosen = [this](std::size_t row) { Centre(row); };
  actions.save = [this] {
    if (table_) host_.save(TextOf(*table_, ',', "\r\n"));
  };
  actions.closed = [this] { Close(); };
  view_.ShowPointTable(*table_, std::move(actions));
}

void PointTables::Mark(std::size_t row) {
  if (table_ && row < table_->rows.size())
    marks_.ShowPointMarker(table_->rows[row].k, table_->rows[row].index);
}

void PointTables::Centre(std::size_t row) {
  if (!table_ || row >= table_->rows.size()) return;
  const DataPoint* point = points_.Find(table_->rows[row].k, table_->rows[row].index);
  if (!point) return;
  centre_ = WorldPoint{point->x, point->y};
  centreScale_ = map_.UnitsPerPixel;
  host_.centre(*centre_);
}

}  // namespace pallomir
