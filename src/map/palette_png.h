#pragma once

#include <cstdint>
#include <span>

#include "base/bytes.h"
#include "map/track_marks.h"

namespace pallomir {

/// Tiles as PNG files: 256 x 256 pixels of four bits, a palette, and the picture uncompressed. So a tile
/// costs little more than its two sums, and its file has the same 33 kB whatever is on it.
class PalettePng {
 public:
  /// 1 to 16 colours, 0xAARRGGBB.
  explicit PalettePng(std::span<const std::uint32_t> palette);

  /// The whole file. The tile's colour indexes lie within the palette. The bytes stay until the next call.
  ByteView Encode(TilePixels tile);

 private:
  Bytes file_;               // complete but for the picture and its sums
  std::size_t picture_ = 0;  // where the rows begin
};

}  // namespace pallomir
