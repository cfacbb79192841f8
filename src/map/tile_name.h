#pragma once

#include <cstdint>
#include <string>

namespace pallomir {

/// Edge of a tile in pixels.
inline constexpr int kTileSize = 256;

/// Which tile of a zoom: pixel coordinates divided by kTileSize, towards zero.
struct TilePlace {
  std::int32_t column = 0;
  std::int32_t row = 0;
  bool operator==(const TilePlace&) const = default;
};

/// A tile's name: 18 upper-case hexadecimal digits, each field cut to its rightmost digits.
///
///     GGGG ZZ CCCCCC RRRRRR    generation, zoom, column, row
///
/// It is the tile's key and its file's name without ".png". The page knows the last 14 digits only.
std::string TileName(int generation, int zoom, TilePlace tile);

/// Of the tile that holds this pixel.
inline std::string TileName(int generation, int zoom, std::int32_t pixelX, std::int32_t pixelY) {
  return TileName(generation, zoom, TilePlace{pixelX / kTileSize, pixelY / kTileSize});
}

inline constexpr std::size_t kTileNameSize = 18;
inline constexpr std::size_t kTileSuffixSize = 14;

}  // namespace pallomir
