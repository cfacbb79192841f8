#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/trace.h"
#include "map/imaging.h"
#include "map/palette_png.h"
#include "map/tile_files.h"
#include "map/tile_renderer.h"
#include "platform/folders.h"

namespace pallomir {

/// Where tile files and the pictures that stand in for them lie.
struct TileFolders {
  std::filesystem::path track;         ///< emptied and filled by every rebuild
  std::filesystem::path zone;          ///< only emptied: nothing writes zone tiles
  std::filesystem::path placeholders;  ///< blank_x.png, Red.png, Grn.png
};

/// "Application Data/pallomir/Tiles" and "…/Tiles_Zones" in the user's folder; the pictures lie beside the
/// executable.
TileFolders FoldersOfTiles(const Folders& folders);

inline constexpr char kBlankTile[] = "blank_x.png";
inline constexpr char kAlertedTile[] = "Red.png";
inline constexpr char kNotAlertedTile[] = "Grn.png";

/// The track tiles on disk: one set at a time, replaced whole by every rebuild under the next generation.
class TrackTiles {
 public:
  /// `showError` gets what the user must know.
  TrackTiles(TileFolders folders, Trace& trace, std::function<void(const std::string&)> showError);

  /// Draws the new set and writes it in the old one's place; without a drawing the new set is empty. An error
  /// while deleting leaves the generation as it is. A tile that can't be written is missing, and traced.
  std::optional<DeleteError> Rebuild(const TrackDrawing* drawing);

  /// 0 before the first rebuild, 0..65535.
  int TileGeneration() const { return generation_; }
  /// Four upper-case hexadecimal digits.
  std::string GenerationText() const;

  const FastestPoints& Fastest() const { return fastest_; }

  /// Full path of the track tile with this suffix, or of the blank tile.
  std::string TrackTilePath(std::string_view suffix) const;
  /// The same for zone tiles, which are red or green as a whole.
  std::string ZoneTilePath(std::string_view suffix, bool alerted) const;

 private:
  void SaveTile(const std::string& name, TilePixels tile);

  TileFolders folders_;
  Trace& trace_;
  std::function<void(const std::string&)> showError_;
  cGDIP imaging_;
  PalettePng png_{kTrackPalette};
  int generation_ = 0;
  FastestPoints fastest_;
};

}  // namespace pallomir
