#include "map/tile_name.h"

#include "base/number_format.h"

namespace pallomir {

std::string TileName(int generation, int zoom, std::int32_t pixelX, std::int32_t pixelY) {
  const auto digits = [](std::int32_t value, int count) {
    return HexDigits(static_cast<std::uint32_t>(value), count);
  };
  return digits(generation, 4) + digits(zoom, 2) + digits(pixelX / kTileSize, 6) +
         digits(pixelY / kTileSize, 6);
}

}  // namespace pallomir
