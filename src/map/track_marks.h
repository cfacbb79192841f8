#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
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

/// The tiles of one rebuild: which were touched, and a colour index for each of their pixels. A later mark
/// overwrites an earlier one.
class TrackMarks {
 public:
  /// One tile's pixels, row by row from the top.
  using Plane = std::vector<std::uint8_t>;

  TrackMarks(int generation, int zoom) : generation_(generation), zoom_(zoom) {}

  /// Pixel coordinates at the set's zoom.
  void MarkPixel(std::int32_t px, std::int32_t py, std::uint8_t colour);

  std::size_t TileCount() const { return tiles_.size(); }

  /// Name of the tile in slot 0..TileCount()-1, in the order of the first touch.
  const std::string& Name(std::size_t slot) const { return tiles_[slot].name; }
  const Plane& Marks(std::size_t slot) const { return tiles_[slot].marks; }

 private:
  struct Tile {
    std::string name;
    Plane marks;
  };

  Tile& TileAt(std::int32_t px, std::int32_t py);

  int generation_;
  int zoom_;
  std::unordered_map<std::uint64_t, std::size_t> slots_;
  std::vector<Tile> tiles_;
  // The tile of the last mark: marks come in runs along a track.
  std::uint64_t lastKey_ = 0;
  std::size_t lastSlot_ = 0;
  bool hasLast_ = false;
};

}  // namespace pallomir
