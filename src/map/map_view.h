#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/data_point.h"
#include "platform/geometry.h"

namespace pallomir {

/// The zooms that the page may report; beyond 22 a pixel would be less than one world unit.
inline constexpr int kMinTileZoom = 0;
inline constexpr int kMaxTileZoom = 22;
inline constexpr bool IsTileZoom(int zoom) { return zoom >= kMinTileZoom && zoom <= kMaxTileZoom; }
/// The zoom of a fit to a single place.
inline constexpr int kPlaceZoom = 17;

/// A bounding box in world units. Empty until it is widened; an empty one has MaxX < MinX.
struct WorldBox {
  std::int32_t MinX = 2147483647;
  std::int32_t MaxX = -2147483647;
  std::int32_t MinY = 2147483647;
  std::int32_t MaxY = -2147483647;

  bool IsEmpty() const { return MaxX < MinX; }
  void Widen(std::int32_t x, std::int32_t y);
  bool operator==(const WorldBox&) const = default;
};

/// What the map shows and what it was asked to show.
struct MapView {
  std::int32_t CentreX = 0;  ///< world coordinates of the centre
  std::int32_t CentreY = 0;
  double CentreLat = 0;  ///< the same in degrees
  double CentreLng = 0;
  bool HasCentre = false;  ///< a fit or the page has set it
  double LatestLat = 0;    ///< degrees of the newest data point
  double LatestLng = 0;
  int RequestedZoom = kPlaceZoom;  ///< what the host last asked the page for
  int TileZoom = -1;               ///< what the page last reported; -1: nothing yet
  std::int32_t UnitsPerPixel = 0;  ///< 2^(22 - TileZoom)
  WorldBox DataBox;                ///< of the data being fitted
};

/// What a zoom report changed.
enum class ZoomChange {
  kNone,     ///< the zoom already in force, or one outside 0..22, which is ignored
  kFirst,    ///< the first zoom known
  kChanged,  ///< another zoom than before
};

/// Takes over a zoom that the page reported and recomputes the scale.
ZoomChange SetTileZoom(MapView& view, int newZoom);

/// The centre that the page reported after a pan, in degrees.
void SetCentre(MapView& view, double lat, double lng);

/// The bounding box of the points; empty where there are none.
WorldBox BoxOf(std::span<const DataPoint> points, WorldBox box = {});

/// The box that a fit without any data shows: 23 to 50 degrees north, 125 to 66 degrees west.
WorldBox DefaultBox();

/// A box in degrees: south, north, west, east.
WorldBox BoxOfDegrees(const std::array<double, 4>& edges);

/// Centre and RequestedZoom for the box, the largest zoom at which it fits into `size`; no margin. A box that
/// is a point or a line keeps zoom 17, as does a size of nothing.
void FitToBox(MapView& view, const WorldBox& box, PixelSize size);

struct WorldPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
  bool operator==(const WorldPoint&) const = default;
};

struct ViewPoint {
  int x = 0;
  int y = 0;
  bool operator==(const ViewPoint&) const = default;
};

/// Part of the browser's width that the page does not use.
inline constexpr int kUnusedBrowserWidth = 18;

/// Where a world point lies in the view. `size` is the browser's; a zoom must be known.
ViewPoint WorldToView(const MapView& view, std::int32_t x, std::int32_t y, PixelSize size);

/// The world point under a view pixel. It takes the middle of the whole browser, without the unused part.
WorldPoint ViewToWorld(const MapView& view, int sx, int sy, PixelSize size);

/// The box that the page shows, a little smaller, so that a fit to it comes back to the zoom that the page
/// reported; before its first report the data's box.
WorldBox ShownBox(const MapView& view, PixelSize size);

}  // namespace pallomir
