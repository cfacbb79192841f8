#include "map/track_tiles.h"

#include <algorithm>
#include <utility>

#include "base/number_format.h"

namespace pallomir {
namespace {

// Parts of a rebuild that take some two milliseconds each.
constexpr std::size_t kPointsAtOnce = std::size_t{1} << 16;
constexpr std::size_t kTilesAtOnce = 32;

}  // namespace

TileFolders FoldersOfTiles(const Folders& folders) {
  const std::filesystem::path parent = folders.userProfile / "Application Data" / "pallomir";
  return {parent / "Tiles", parent / "Tiles_Zones", folders.application};
}

void EmptyTileFolders(const TileFolders& folders) {
  const std::filesystem::path parent = folders.track.parent_path();
  for (const auto& folder : {parent.parent_path(), parent, folders.track, folders.zone}) MakeFolder(folder);
  DeleteFiles(folders.track);
  DeleteFiles(folders.zone);
}

TrackTiles::TrackTiles(TileFolders folders, Trace& trace) : folders_(std::move(folders)), trace_(trace) {}

void TrackTiles::Begin(std::optional<TrackDrawing> drawing) {
  rebuild_.reset();  // its picture may be large
  fastest_ = {};     // the points that it names may be gone
  rebuild_.emplace();
  if (!drawing) return;
  rebuild_->zoom = drawing->TileZoom;
  rebuild_->painter = std::make_unique<TrackPainter>(std::move(*drawing));
}

std::optional<RebuildEnd> TrackTiles::Continue() {
  if (rebuild_->painter) {
    if (rebuild_->painter->Paint(kPointsAtOnce)) return std::nullopt;
    rebuild_->picture = rebuild_->painter->Take();
    rebuild_->painter.reset();
    rebuild_->touched = rebuild_->picture.marks.TouchedTiles();
    return std::nullopt;
  }
  if (!std::exchange(rebuild_->retired, true)) {
    auto error = RetireOld();
    if (!error) return std::nullopt;
    rebuild_.reset();
    return RebuildEnd{std::move(error)};
  }
  const std::size_t end = std::min(rebuild_->written + kTilesAtOnce, rebuild_->names.size());
  for (std::size_t& i = rebuild_->written; i < end; ++i)
    SaveTile(rebuild_->names[i], rebuild_->picture.marks.PixelsOf(rebuild_->touched[i]));
  if (end < rebuild_->names.size()) return std::nullopt;
  rebuild_.reset();
  return RebuildEnd();
}

std::optional<DeleteError> TrackTiles::RetireOld() {
  const int generation = (generation_ + 1) % 65536;
  for (const TilePlace tile : rebuild_->touched)
    rebuild_->names.push_back(TileName(generation, rebuild_->zoom, tile));
  // Zone tiles first: no track tile is renamed then for nothing.
  if (auto error = DeleteFiles(folders_.zone)) return error;
  if (auto error = RetireTiles(folders_.track, rebuild_->names)) return error;
  fastest_ = std::move(rebuild_->picture.fastest);
  generation_ = generation;
  return std::nullopt;
}

void TrackTiles::SaveTile(const std::string& name, TilePixels tile) {
  if (!WriteTile(folders_.track, name, png_.Encode(tile)))
    trace_.Line("tile " + name + " could not be written");
}

std::string TrackTiles::GenerationText() const {
  return HexDigits(static_cast<std::uint64_t>(generation_), 4);
}

std::string TrackTiles::TrackTilePath(std::string_view suffix) const {
  const std::string name = suffix.empty() ? std::string() : FindTile(folders_.track, suffix);
  return name.empty() ? folders_.placeholders / kBlankTile : folders_.track / name;
}

std::string TrackTiles::ZoneTilePath(std::string_view suffix, bool alerted) const {
  const std::string name = suffix.empty() ? std::string() : FindTile(folders_.zone, suffix);
  return name.empty() ? folders_.placeholders / (alerted ? kAlertedTile : kNotAlertedTile)
                      : folders_.zone / name;
}

}  // namespace pallomir
