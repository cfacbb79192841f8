#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace pallomir {

/// Why the files of a folder could not be deleted, as it is shown.
struct DeleteError {
  int number = 0;  ///< 70 permission denied, 75 any other
  std::string description;
};

/// Deletes every file of the folder. Sub-folders stay. No such folder and nothing to delete are no errors.
std::optional<DeleteError> DeleteFiles(const std::filesystem::path& folder);

/// The same, but as many tile files as there are `names` stay: they get these names (18 digits, all of one
/// generation), for WriteTile to write over them. Until then they hold their old pictures. An error of
/// renaming is one of deleting, and leaves no file under a new name if it can be helped.
std::optional<DeleteError> RetireTiles(const std::filesystem::path& folder,
                                       const std::vector<std::string>& names);

/// Writes a tile's file, over one that is there. When that fails there is none.
bool WriteTile(const std::filesystem::path& folder, const std::string& name, ByteView png);

/// The file name of the tile with this 14-digit suffix, of any generation; empty when there is none.
std::string FindTile(const std::filesystem::path& folder, std::string_view suffix);

}  // namespace pallomir
