#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// The file in or below `root` that a request for `path` means, or nothing if there is none. `path` is
/// decoded and may be any text; the map page, a plain file, is asked for as "/fullscreen/index.php". Folders,
/// hidden files and whatever lies outside the root, by way of a link too, count as not there.
std::optional<std::filesystem::path> FindWebFile(const std::filesystem::path& root, std::string_view path);

/// The Content-Type for a file, by the ending of its name; "application/octet-stream" if that is unknown.
std::string ContentType(const std::filesystem::path& file);

}  // namespace pallomir::station
