#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/trace.h"
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

/// Makes the folders of the tiles and deletes what an earlier run left in them.
void EmptyTileFolders(const TileFolders& folders);

inline constexpr char kBlankTile[] = "blank_x.png";
inline constexpr char kAlertedTile[] = "Red.png";
inline constexpr char kNotAlertedTile[] = "Grn.png";

/// How a rebuild ended. An error while deleting leaves the generation as it is.
struct RebuildEnd {
  std::optional<DeleteError> error;
};

/// How far a rebuild has come. Declared out here because a nested one is incomplete where the optional below
/// asks whether it can be made.
struct TileRebuild {
  std::unique_ptr<TrackPainter> painter;  ///< none when there is nothing left to draw
  int zoom = 0;
  TrackPicture picture;
  std::vector<TilePlace> touched;
  std::vector<std::string> names;
  std::size_t written = 0;
  bool retired = false;
};

/// The track tiles on disk: one set at a time, replaced whole by every rebuild under the next generation.
///
/// A rebuild is done in parts, so that the window answers in between however many points there are. From its
/// begin to its end nobody may be told of a tile: some may still hold their old pictures.
class TrackTiles {
 public:
  TrackTiles(TileFolders folders, Trace& trace);

  /// Begins to draw a new set, to be written in the old one's place; without a drawing it is empty. A rebuild
  /// that has not ended is dropped. The drawing's points are read until then.
  void Begin(std::optional<TrackDrawing> drawing);

  /// Does the next few milliseconds' work of it. A tile that can't be written is missing, and traced.
  std::optional<RebuildEnd> Continue();

  bool IsRebuilding() const { return rebuild_.has_value(); }

  /// Drops a rebuild that has not ended; another one has to follow.
  void Drop() { rebuild_.reset(); }

  /// 0 before the first rebuild, 0..65535.
  int TileGeneration() const { return generation_; }
  /// Four upper-case hexadecimal digits.
  std::string GenerationText() const;

  /// Of the set on disk; none from the begin of a rebuild to its end.
  const FastestPoints& Fastest() const { return fastest_; }

  /// Full path of the track tile with this suffix, or of the blank tile.
  std::string TrackTilePath(std::string_view suffix) const;
  /// The same for zone tiles, which are red or green as a whole.
  std::string ZoneTilePath(std::string_view suffix, bool alerted) const;

 private:
  std::optional<DeleteError> RetireOld();
  void SaveTile(const std::string& name, TilePixels tile);

  TileFolders folders_;
  Trace& trace_;
  PalettePng png_{kTrackPalette};
  int generation_ = 0;
  FastestPoints fastest_;
  std::optional<TileRebuild> rebuild_;
};

}  // namespace pallomir
