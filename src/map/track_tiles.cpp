#include "map/track_tiles.h"

#include <utility>

#include "base/number_format.h"

namespace pallomir {

TileFolders FoldersOfTiles(const Folders& folders) {
  const std::filesystem::path parent = folders.userProfile / "Application Data" / "pallomir";
  return {parent / "Tiles", parent / "Tiles_Zones", folders.application};
}

TrackTiles::TrackTiles(TileFolders folders, Trace& trace, std::function<void(const std::string&)> showError)
    : folders_(std::move(folders)), trace_(trace), showError_(std::move(showError)) {
  imaging_.raised = [this](int status, const std::string& message, const std::string& source) {
    trace_.Line("imaging error " + std::to_string(status) + " (" + message + ") in " + source);
  };
}

std::optional<DeleteError> TrackTiles::Rebuild(const TrackDrawing* drawing) {
  TrackPicture picture = drawing ? DrawTracks(*drawing) : TrackPicture();
  const int generation = (generation_ + 1) % 65536;
  std::vector<TilePlace> touched = picture.marks.TouchedTiles();
  std::vector<std::string> names;
  if (cBitmap::EncoderForPattern("*.png") == ImageEncoder::kNone) {
    showError_("Error: \"*.png\" extension not supported");
    touched.clear();
  }
  for (const TilePlace tile : touched) names.push_back(TileName(generation, drawing->TileZoom, tile));
  // Zone tiles first: no track tile is renamed then for nothing.
  if (const auto error = DeleteFiles(folders_.zone)) return error;
  if (const auto error = RetireTiles(folders_.track, names)) return error;
  fastest_ = std::move(picture.fastest);
  generation_ = generation;
  for (std::size_t i = 0; i < touched.size(); ++i) SaveTile(names[i], picture.marks.PixelsOf(touched[i]));
  return std::nullopt;
}

void TrackTiles::SaveTile(const std::string& name, TilePixels tile) {
  if (!WriteTile(folders_.track, name, png_.Encode(tile))) {
    imaging_.Error(kWin32Error, "SaveToFile");
    trace_.Line("tile " + name + " could not be written");
  }
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
