#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <system_error>

namespace pallomir::servicehost {

/// A small file of Key=Value lines. Values must not hold line breaks. Lines that are none
/// are left out.
using Record = std::map<std::string, std::string>;

Record ParseRecord(const std::string& text);

/// Empty when there is no such file, or none that could be one.
Record ReadRecord(const std::filesystem::path& file);

std::error_code WriteRecord(const std::filesystem::path& file, const Record& record);

}  // namespace pallomir::servicehost
