#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "map/tile_name.h"

namespace pallomir {

/// Colour indexes of track tiles.
enum TrackColour : std::uint8_t {
  kTransparent = 0,
  kRed = 1,      ///< cross of a data point; ring of a point sent but not received
  kWhite = 2,    ///< track line
  kBlack = 3,    ///< track line
  kBlue = 4,     ///< ring of a point sent and received
  kGreen = 5,    ///< first point of a unit
  kMagenta = 6,  ///< last point of a unit
};

/// Their colours, 0xAARRGGBB.
inline constexpr std::uint32_t kTrackPalette[] = {0x00000000, 0xFFFF0000, 0xFFFFFFFF, 0xFF000000,
                                                  0xFF0000FF, 0xFF00FF00, 0xFFFF00FF};

/// A range of pixel coordinates, both ends included; empty where last < first.
struct PixelRange {
  std::int64_t first = 0;
  std::int64_t last = -1;
};

/// The pixels of one tile: rows of kTileSize colour indexes, `stride` bytes apart.
struct TilePixels {
  const std::uint8_t* rows = nullptr;
  std::ptrdiff_t stride = 0;
};

/// Bytes of pixels from (left, top) on, rows `stride` bytes apart.
struct MarkPlane {
  std::uint8_t* bytes = nullptr;
  std::ptrdiff_t stride = 0;
  std::int64_t left = 0;
  std::int64_t top = 0;

  std::uint8_t* At(std::int64_t x, std::int64_t y) const { return bytes + (y - top) * stride + (x - left); }
};

/// The marks of one rebuild: one plane with a colour index for every pixel of the band, widened to whole
/// tiles. A later mark overwrites an earlier one. No colour is 0, so a tile was touched exactly when it holds
/// a byte that is not 0. The first plane starts as untouched zero pages, so memory is taken where something
/// is drawn; the allocator may keep it for the next one.
class TrackMarks {
 public:
  TrackMarks() = default;

  /// A plane for marks within these pixel coordinates (at the tiles' zoom).
  TrackMarks(PixelRange x, PixelRange y);

  /// Within the plane's ranges.
  void MarkPixel(std::int64_t px, std::int64_t py, std::uint8_t colour) {
    *plane_.At(Folded(px), Folded(py)) = colour;
  }

  /// The plane itself, for marks none of whose coordinates is negative.
  const MarkPlane& Unfolded() { return plane_; }

  /// The tiles that hold a mark, row by row.
  std::vector<TilePlace> TouchedTiles() const;

  /// Of a tile that TouchedTiles() named.
  TilePixels PixelsOf(TilePlace tile) const;

 private:
  struct Free {
    void operator()(std::uint8_t* memory) const { std::free(memory); }
  };

  // A tile's column is its pixel divided by 256 towards zero, while the place within the tile is the low
  // eight bits. So the pixels -255..-1 fall on column 0, over 1..255, and every negative column is shifted
  // alike.
  static std::int64_t Folded(std::int64_t p) { return p < 0 && p % kTileSize != 0 ? p + kTileSize : p; }

  TilePlace first_;
  std::int32_t columns_ = 0;
  std::int32_t rows_ = 0;
  MarkPlane plane_;
  std::unique_ptr<std::uint8_t, Free> memory_;
};

}  // namespace pallomir
