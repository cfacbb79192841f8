#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace pallomir {

/// Keeps a file's content beside it under the first free name "<file>.damaged1" to "99", before something
/// else takes its place. Where it lies there already, nothing is written. The error, or none.
std::error_code KeepDamagedCopy(const std::filesystem::path& file, std::string_view content);

}  // namespace pallomir
