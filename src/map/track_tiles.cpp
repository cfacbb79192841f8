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
  if (const auto error = DeleteOldTiles()) return error;
  fastest_ = {};
  generation_ = (generation_ + 1) % 65536;
  if (drawing) {
    TrackPicture picture = DrawTracks(*drawing, generation_);
    fastest_ = std::move(picture.fastest);
    WriteTiles(picture.marks);
  }
  return std::nullopt;
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

std::optional<DeleteError> TrackTiles::DeleteOldTiles() {
  for (const auto& folder : {folders_.track, folders_.zone}) {
    if (const auto error = DeleteFiles(folder)) return error;
  }
  return std::nullopt;
}

void TrackTiles::WriteTiles(const TrackMarks& marks) {
  const ImageEncoder encoder = cBitmap::EncoderForPattern("*.png");
  for (std::size_t slot = 0; slot < marks.TileCount(); ++slot) {
    if (encoder == ImageEncoder::kNone) {
      showError_("Error: \"*.png\" extension not supported");
    } else if (!SaveTile(marks, slot, folders_.track, bitmap_, encoder)) {
      trace_.Line("tile " + marks.Name(slot) + " could not be written");
    }
  }
}

}  // namespace pallomir
