#include "timeline/map_marks.h"

#include <cstdlib>
#include <optional>
#include <utility>

namespace pallomir {
namespace {

constexpr int kPlaceMilliseconds = 5000;

}  // namespace

MapMarks::MapMarks(MarksView& view, EventLoop& loop, const MapView& map, const DisplayedPoints& points,
                   const TimeWindow& window, Host host)
    : view_(view),
      map_(map),
      points_(points),
      window_(window),
      host_(std::move(host)),
      placeTimer_(loop.CreateTimer("PlaceTimer", kPlaceMilliseconds, [this] { Unmark(place_); })),
      boxTimer_(loop.CreateTimer("BoxTimer", 1000, [this] { OnBoxTick(); })),
      tmrP_(loop.CreateTimer("tmrP", 100, [this] { view_.ShowCapturePanel(); })) {}

void MapMarks::Close() {
  place_.reset();
  HidePointMarker();
  isClosed_ = true;
  placeTimer_->SetEnabled(false);
  boxTimer_->SetEnabled(false);
  tmrP_->SetEnabled(false);
}

void MapMarks::ShowPointMarker(std::size_t k, std::size_t index) {
  const DataPoint* point = points_.Find(k, index);
  if (isClosed_ || map_.UnitsPerPixel == 0 || !point) return;
  view_.HidePointMarker();
  view_.ShowPointMarker(PlaceOf(*point));
  boxTimer_->SetEnabled(true);
}

void MapMarks::HidePointInfos() {
  host_.pointerLeft();
  view_.HidePointInfos();
}

void MapMarks::ShowPlace(WorldPoint place) {
  if (isClosed_) return;
  place_ = place;
  placeTimer_->SetEnabled(false);
  placeTimer_->SetEnabled(true);
  MarkPlace();
}

// Beside the map there is nothing to mark: the map is on its way.
void MapMarks::MarkPlace() {
  if (!place_ || map_.UnitsPerPixel == 0) return;
  const ViewPoint at = WorldToView(map_, place_->x, place_->y, host_.browserSize());
  if (IsOnMap(at)) view_.ShowPointMarker(at);
}

void MapMarks::HidePointMarker() {
  HidePointInfos();
  view_.HidePointMarker();
  MarkPlace();
  host_.mapChanged();
}

void MapMarks::Unmark(std::optional<WorldPoint> place) {
  if (place_ == place) place_.reset();
  if (!place_) placeTimer_->SetEnabled(false);
  OnBoxTick();
}

void MapMarks::OnBoxTick() {
  view_.HidePointMarker();
  boxTimer_->SetEnabled(false);
  MarkPlace();
}

void MapMarks::PointerOverMap(ViewPoint at) {
  view_.PointerOverMap(at);
  ShowPointAtShare(at.x);
}

ViewPoint MapMarks::PlaceOf(const DataPoint& point) const {
  return WorldToView(map_, point.x, point.y, host_.browserSize());
}

bool MapMarks::IsOnMap(ViewPoint at) const {
  const PixelSize browser = host_.browserSize();
  return at.x >= 0 && at.y >= 0 && at.x < browser.width - kUnusedBrowserWidth && at.y < browser.height;
}

// The map's width, less a margin of 20 pixels on each side, stands for the time window. For each unit the
// point nearest to the instant under the pointer is described; the one nearest to the pointer on the map is
// marked.
void MapMarks::ShowPointAtShare(int x) {
  constexpr int kMargin = 20;
  const int width = host_.browserSize().width - 2 * kMargin;
  const double share = (x - kMargin) / static_cast<double>(width);
  if (isClosed_ || width <= 0 || share < 0 || share > 1) return HidePointInfos();
  const Millis local = window_.start + static_cast<Millis>(share * static_cast<double>(window_.Length()));
  std::vector<std::string> texts;
  std::optional<std::pair<std::size_t, std::size_t>> marked;  // unit and point
  int leastDistance = 0;
  for (std::size_t k = 1; k <= points_.UnitCount(); ++k) {
    const auto index = points_.NearestTo(k, local);
    if (!index) continue;
    texts.push_back(points_.TextOf(k, *index));
    if (map_.UnitsPerPixel == 0) continue;
    const ViewPoint at = PlaceOf(*points_.Find(k, *index));
    const int distance = std::abs(at.x - x);
    if (!IsOnMap(at) || (marked && distance >= leastDistance)) continue;
    marked = {k, *index};
    leastDistance = distance;
  }
  if (texts.empty()) return HidePointInfos();
  view_.ShowPointInfos(texts);
  if (marked) ShowPointMarker(marked->first, marked->second);
}

void MapMarks::RubberBandDrawn(ViewPoint a, ViewPoint b) {
  // Less than that is a click with an unsteady hand.
  constexpr int kSmallest = 4;
  const bool isClick = std::abs(a.x - b.x) < kSmallest || std::abs(a.y - b.y) < kSmallest;
  if (isClosed_ || map_.UnitsPerPixel == 0 || isClick) return;
  WorldBox box;
  for (const ViewPoint corner : {a, b}) {
    const WorldPoint place = ViewToWorld(map_, corner.x, corner.y, host_.browserSize());
    box.Widen(place.x, place.y);
  }
  host_.boxDrawn(box);
}

}  // namespace pallomir
