#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace pallomir {

/// The folders that the system gives the program.
struct Folders {
  std::filesystem::path application;    ///< where the executable and its assets lie
  std::filesystem::path commonData;     ///< common application data; created if missing
  std::filesystem::path userProfile;    ///< the user's own folder
  std::string executable = "pallomir";  ///< the program's file name in the application folder
};

/// Creates the folder; any error (it exists, the parent is missing) is ignored.
void MakeFolder(const std::filesystem::path& folder);

}  // namespace pallomir
