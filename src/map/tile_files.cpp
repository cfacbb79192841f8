#include "map/tile_files.h"

#include <system_error>

namespace pallomir {
namespace {

constexpr std::string_view kEnding = ".png";

std::optional<DeleteError> ErrorOf(const std::error_code& error) {
  if (!error || error == std::errc::no_such_file_or_directory) return std::nullopt;
  const bool denied = error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
                      error == std::errc::read_only_file_system;
  return DeleteError{denied ? 70 : 75, error.message()};
}

}  // namespace

std::optional<DeleteError> DeleteFiles(const std::filesystem::path& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ofEntry;
    if (entry->is_directory(ofEntry) && !entry->is_symlink(ofEntry)) continue;
    std::filesystem::remove(entry->path(), ofEntry);
    if (const auto failure = ErrorOf(ofEntry)) return failure;
  }
  return ErrorOf(error);
}

bool SaveTile(const TrackMarks& marks, std::size_t slot, const std::filesystem::path& folder, cBitmap& bitmap,
              ImageEncoder encoder) {
  if (bitmap.CreateFromScan0(kTileSize, kTileSize, 4 * kTileSize, kPixelFormat32bppARGB) != kImagingOk)
    return false;
  const TrackMarks::Plane& plane = marks.Marks(slot);
  for (int x = 0; x < kTileSize; ++x) {
    for (int y = 0; y < kTileSize; ++y) {
      const std::uint8_t colour = plane[static_cast<std::size_t>(y * kTileSize + x)];
      if (colour > 0) bitmap.SetPixelLong(x, y, kTrackPalette[colour]);
    }
  }
  const int status = bitmap.SaveToFile(folder / (marks.Name(slot) + std::string(kEnding)), encoder);
  bitmap.Dispose();
  return status == kImagingOk;
}

std::string FindTile(const std::filesystem::path& folder, std::string_view suffix) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.size() == kTileNameSize + kEnding.size() && name.ends_with(kEnding) &&
        name.substr(kTileNameSize - kTileSuffixSize, kTileSuffixSize) == suffix) {
      return name;
    }
  }
  return {};
}

}  // namespace pallomir
