#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "map/imaging.h"
#include "map/track_marks.h"

namespace pallomir {

/// Why the files of a folder could not be deleted, as it is shown.
struct DeleteError {
  int number = 0;  ///< 70 permission denied, 75 any other
  std::string description;
};

/// Deletes every file of the folder. Sub-folders stay. No such folder and nothing to delete are no errors.
std::optional<DeleteError> DeleteFiles(const std::filesystem::path& folder);

/// Writes the tile in `slot` as PNG under its name. False when that failed; the bitmap has reported why.
bool SaveTile(const TrackMarks& marks, std::size_t slot, const std::filesystem::path& folder, cBitmap& bitmap,
              ImageEncoder encoder);

/// The file name of the tile with this 14-digit suffix, of any generation; empty when there is none.
std::string FindTile(const std::filesystem::path& folder, std::string_view suffix);

}  // namespace pallomir
