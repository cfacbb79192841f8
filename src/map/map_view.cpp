#include "map/map_view.h"

#include <algorithm>
#include <cmath>

#include "map/projection.h"

namespace pallomir {
namespace {

// Nothing when the box or the size gives no ratio.
int ZoomForBox(const WorldBox& box, PixelSize size) {
  if (box.MaxX <= box.MinX || box.MaxY <= box.MinY || size.width <= 0 || size.height <= 0) return kPlaceZoom;
  const double ratioX = (static_cast<double>(box.MaxX) - box.MinX) / size.width;
  const double ratioY = (static_cast<double>(box.MaxY) - box.MinY) / size.height;
  const double ratio = ratioX <= ratioY ? ratioY : ratioX;
  return static_cast<int>(std::floor(-std::log(ratio) / std::log(2.0))) + 22;
}

}  // namespace

void WorldBox::Widen(std::int32_t x, std::int32_t y) {
  MinX = std::min(MinX, x);
  MaxX = std::max(MaxX, x);
  MinY = std::min(MinY, y);
  MaxY = std::max(MaxY, y);
}

ZoomChange SetTileZoom(MapView& view, int newZoom) {
  if (newZoom == view.TileZoom || !IsTileZoom(newZoom)) return ZoomChange::kNone;
  const int oldZoom = view.TileZoom;
  view.TileZoom = newZoom;
  view.UnitsPerPixel = 1 << (22 - newZoom);
  return oldZoom == -1 ? ZoomChange::kFirst : ZoomChange::kChanged;
}

void SetCentre(MapView& view, double lat, double lng) {
  view.HasCentre = true;
  view.CentreLat = lat;
  view.CentreLng = lng;
  view.CentreY = LatToWorldY(DegreesToPositionUnits(lat));
  view.CentreX = LngToWorldX(DegreesToPositionUnits(lng));
}

WorldBox BoxOf(std::span<const DataPoint> points, WorldBox box) {
  for (const DataPoint& point : points) box.Widen(point.x, point.y);
  return box;
}

WorldBox DefaultBox() { return BoxOfDegrees({23.0, 50.0, -125.0, -66.0}); }

WorldBox BoxOfDegrees(const std::array<double, 4>& edges) {
  WorldBox box;
  box.MaxY = LatToWorldY(DegreesToPositionUnits(edges[0]));
  box.MinY = LatToWorldY(DegreesToPositionUnits(edges[1]));
  box.MinX = LngToWorldX(DegreesToPositionUnits(edges[2]));
  box.MaxX = LngToWorldX(DegreesToPositionUnits(edges[3]));
  return box;
}

void FitToBox(MapView& view, const WorldBox& box, PixelSize size) {
  view.HasCentre = true;
  view.CentreX = RoundToWorld(box.MinX / 2.0 + box.MaxX / 2.0);
  view.CentreY = RoundToWorld(box.MinY / 2.0 + box.MaxY / 2.0);
  // A field has two digits for it, so more than 99 or less than 0 can't be sent.
  view.RequestedZoom = std::clamp(ZoomForBox(box, size), 0, 99);
  view.CentreLat = WorldYToLat(view.CentreY);
  view.CentreLng = WorldXToLng(view.CentreX);
}

ViewPoint WorldToView(const MapView& view, std::int32_t x, std::int32_t y, PixelSize size) {
  const std::int64_t dx = static_cast<std::int64_t>(x) - view.CentreX;
  const std::int64_t dy = static_cast<std::int64_t>(y) - view.CentreY;
  return {static_cast<int>(dx / view.UnitsPerPixel) + (size.width - kUnusedBrowserWidth) / 2,
          static_cast<int>(dy / view.UnitsPerPixel) + size.height / 2};
}

WorldPoint ViewToWorld(const MapView& view, int sx, int sy, PixelSize size) {
  const auto world = [&view](int offset, std::int32_t centre) {
    return RoundToWorld(static_cast<double>(offset) * view.UnitsPerPixel + centre);
  };
  return {world(sx - size.width / 2, view.CentreX), world(sy - size.height / 2, view.CentreY)};
}

WorldBox ShownBox(const MapView& view, PixelSize size) {
  if (view.TileZoom < 0 || !view.HasCentre) return view.DataBox;
  const int marginX = size.width / 16;
  const int marginY = size.height / 16;
  WorldBox box;
  for (const WorldPoint corner : {ViewToWorld(view, marginX, marginY, size),
                                  ViewToWorld(view, size.width - marginX, size.height - marginY, size)})
    box.Widen(corner.x, corner.y);
  return box;
}

}  // namespace pallomir
