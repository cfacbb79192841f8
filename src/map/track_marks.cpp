#include "map/track_marks.h"

namespace pallomir {

void TrackMarks::MarkPixel(std::int32_t px, std::int32_t py, std::uint8_t colour) {
  // Within a tile the low eight bits count, also those of a negative coordinate.
  const auto x = static_cast<std::size_t>(px & (kTileSize - 1));
  const auto y = static_cast<std::size_t>(py & (kTileSize - 1));
  TileAt(px, py).marks[y * kTileSize + x] = colour;
}

TrackMarks::Tile& TrackMarks::TileAt(std::int32_t px, std::int32_t py) {
  // Division truncates, so that the pixels -255..255 share column 0, as their names do.
  const std::uint64_t key = static_cast<std::uint64_t>(static_cast<std::uint32_t>(px / kTileSize)) << 32 |
                            static_cast<std::uint32_t>(py / kTileSize);
  if (hasLast_ && key == lastKey_) return tiles_[lastSlot_];
  const auto [slot, isNew] = slots_.try_emplace(key, tiles_.size());
  if (isNew) {
    tiles_.push_back(
        {TileName(generation_, zoom_, px, py), Plane(std::size_t{kTileSize} * kTileSize, kTransparent)});
  }
  hasLast_ = true;
  lastKey_ = key;
  lastSlot_ = slot->second;
  return tiles_[lastSlot_];
}

}  // namespace pallomir
