#include "platform/qt/shared_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "base/number_format.h"

namespace pallomir {
namespace {

bool IsPlain(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '-';
}

// Every other character as "_" and its code, so that the form can be told back.
std::string FileNameOf(const std::string& name) {
  std::string safe;
  for (const char character : name) {
    if (IsPlain(character)) {
      safe += character;
    } else {
      safe += '_' + HexDigits(static_cast<unsigned char>(character), 2);
    }
  }
  return safe;
}

bool IsOwnFolder(const std::filesystem::path& folder) {
  struct stat status {};
  return folder.is_absolute() && ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::geteuid();
}

std::filesystem::path RuntimeFile(const std::string& file) {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime && IsOwnFolder(runtime)) return std::filesystem::path(runtime) / file;
  std::error_code ignored;
  std::filesystem::path temporary = std::filesystem::temp_directory_path(ignored);
  if (temporary.empty()) temporary = "/tmp";
  return temporary / (std::to_string(::geteuid()) + '-' + file);
}

}  // namespace

std::filesystem::path SharedFile(const std::filesystem::path& folder, const std::string& name,
                                 const std::string& extension, std::size_t longest) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  const std::string file = FileNameOf(name);
  const std::filesystem::path inside = folder / (file + extension);
  if (inside.string().size() <= longest && ::access(folder.c_str(), W_OK | X_OK) == 0) return inside;
  const std::size_t which =
      std::hash<std::string>()(std::filesystem::weakly_canonical(folder, ignored).string());
  return RuntimeFile(file + '-' + HexDigits(which, 16) + extension);
}

}  // namespace pallomir
