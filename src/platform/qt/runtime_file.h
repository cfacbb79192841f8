#pragma once

#include <filesystem>
#include <string>

namespace pallomir {

/// The path of a file that the processes of this user share while the user is logged in: in
/// `$XDG_RUNTIME_DIR` when that is this user's folder, else in the temporary folder with the user's number in
/// the name. Different names give different files, whatever characters they have.
std::filesystem::path RuntimeFile(const std::string& name, const std::string& extension);

}  // namespace pallomir
