#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace pallomir {

/// The longest path of a local socket.
inline constexpr std::size_t kLongestSocketPath = 100;

/// The path of a file that all processes which work with `folder` share: in the folder itself, which is made
/// if it is missing. Where nothing can be written there, or the path would be longer than `longest`, it is a
/// file for that folder in `$XDG_RUNTIME_DIR`, if that is this user's, else in the temporary folder with the
/// user's number in the name. Different names give different files, whatever characters they have.
std::filesystem::path SharedFile(const std::filesystem::path& folder, const std::string& name,
                                 const std::string& extension, std::size_t longest = 4095);

}  // namespace pallomir
