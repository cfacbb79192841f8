#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// The file below `root` that a request for `path` means, or nothing where there is no such file. `path` is
/// decoded and begins with "/"; the map page is asked for as "/fullscreen/index.php" and is a plain file.
/// Folders, hidden files and everything outside the root, also by way of a link, do not exist.
std::optional<std::filesystem::path> FindWebFile(const std::filesystem::path& root, std::string_view path);

/// By the ending of the file's name; bytes without further meaning for an unknown one.
std::string ContentType(const std::filesystem::path& file);

}  // namespace pallomir::station
