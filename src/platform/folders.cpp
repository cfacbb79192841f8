#include "platform/folders.h"

namespace pallomir {

void MakeFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::create_directory(folder, ignored);
}

}  // namespace pallomir
