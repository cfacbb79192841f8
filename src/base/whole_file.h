#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace pallomir {

/// The file's bytes; nothing, with `error` set, when it can't be read or is longer than `limit`.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t limit,
                                         std::error_code& error);

/// Writes the file beside its place, flushes it to the disk and renames it over: a crash or a full disk
/// leaves the old file whole. The error, or none. The file beside has the same name with `suffix`; where more
/// than one process may write, each needs one of its own.
std::error_code ReplaceFile(const std::filesystem::path& path, std::string_view content,
                            std::string_view suffix = ".new");

// The two halves of it, for content that is written long before it counts.
std::error_code WriteDurably(const std::filesystem::path& path, std::string_view content);
std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& path);

}  // namespace pallomir
