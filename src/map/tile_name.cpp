#include "map/tile_name.h"

#include "base/number_format.h"

namespace pallomir {

std::string TileName(int generation, int zoom, TilePlace tile) {
  const auto digits = [](std::int32_t value, int count) {
    return HexDigits(static_cast<std::uint32_t>(value), count);
  };
  return digits(generation, 4) + digits(zoom, 2) + digits(tile.column, 6) + digits(tile.row, 6);
}

}  // namespace pallomir
