#include "map/tile_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "map/tile_name.h"

// Why tiles are written over, and why nobody sees half of it.
//
// To create a file and to delete one costs several times as much as to write 33 kB over one that is
// there. So a rebuild renames the old files to new names, writes over them and deletes what is left over.
//
// - A tile is asked for by its name, generation included, and the page learns the new generation only when
//   all tiles are written. A request for an old name finds no file, as if it had been deleted.
// - Questions for tiles wait while a rebuild runs, so no new name is known before all tiles are written. One
//   that was dropped on the way is followed by another; one that failed answers nothing. A request takes the
//   whole file at once, and runs on the same thread as the writing.
// - A file that can't be written to its end is deleted, or emptied when even that fails: the tile is blank
//   then, never half old and half new. On most file systems a full disk does not matter to a file that keeps
//   its size, as tiles do.
// - Where renaming fails (read-only folder), deleting fails as well: this is found before anything is
//   written. Where something else stands in the new name's place, the old file is deleted.
// - If the program ends in between, by a crash or otherwise, files of the new name may hold the old picture
//   or part of a new one. The next start deletes all files before the page exists.
// - One instance has the folder: the guard against a second one is the user's, as the folder is.
// - Written over is only what is a tile by its name, a plain file, and has no other name (hard link).

namespace pallomir {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEnding = ".png";
constexpr std::size_t kGenerationSize = kTileNameSize - kTileSuffixSize;

std::optional<DeleteError> ErrorOf(const std::error_code& error) {
  if (!error || error == std::errc::no_such_file_or_directory) return std::nullopt;
  const bool denied = error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
                      error == std::errc::read_only_file_system;
  return DeleteError{denied ? 70 : 75, error.message()};
}

std::optional<DeleteError> Delete(const fs::path& file) {
  std::error_code error;
  fs::remove(file, error);
  return ErrorOf(error);
}

bool IsDirectory(const fs::directory_entry& entry) {
  std::error_code ignored;
  return entry.is_directory(ignored) && !entry.is_symlink(ignored);
}

bool IsPlainFile(const fs::directory_entry& entry) {
  std::error_code ignored;
  return entry.is_regular_file(ignored) && !entry.is_symlink(ignored);
}

bool IsTileFile(std::string_view name) {
  const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); };
  return name.size() == kTileNameSize + kEnding.size() && name.ends_with(kEnding) &&
         std::all_of(name.begin(), name.begin() + kTileNameSize, isDigit);
}

fs::path TilePath(const fs::path& folder, const std::string& name) {
  return folder / (name + std::string(kEnding));
}

// Deletes every file that `keep` does not want.
template <class Keep>
std::optional<DeleteError> DeleteUnless(const fs::path& folder, Keep keep) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (IsDirectory(*entry) || keep(*entry)) continue;
    if (const auto failure = Delete(entry->path())) return failure;
  }
  return ErrorOf(error);
}

// Opens for writing over; -1 if it can't or must not be written over.
int OpenOld(const fs::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644);
  struct stat status {};
  if (file < 0 || (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1))
    return file;
  ::close(file);
  return -1;
}

int OpenNew(const fs::path& path) {
  ::unlink(path.c_str());
  return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
}

bool WriteAll(int file, ByteView bytes) {
  const auto size = static_cast<off_t>(bytes.size());
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return ::ftruncate(file, size) == 0;
}

}  // namespace

std::optional<DeleteError> DeleteFiles(const fs::path& folder) {
  return DeleteUnless(folder, [](const fs::directory_entry&) { return false; });
}

std::optional<DeleteError> RetireTiles(const fs::path& folder, const std::vector<std::string>& names) {
  std::vector<fs::path> old;
  const auto keep = [&](const fs::directory_entry& entry) {
    const std::string name = entry.path().filename().string();
    // A file that has the new generation already could lose its name to another one.
    const bool wanted = old.size() < names.size() && IsTileFile(name) && IsPlainFile(entry) &&
                        !name.starts_with(names[0].substr(0, kGenerationSize));
    if (wanted) old.push_back(entry.path());
    return wanted;
  };
  auto failure = DeleteUnless(folder, keep);
  for (std::size_t i = 0; i < old.size() && !failure; ++i) {
    if (::rename(old[i].c_str(), TilePath(folder, names[i]).c_str()) != 0) failure = Delete(old[i]);
  }
  if (failure) {
    for (std::size_t i = 0; i < old.size(); ++i) ::unlink(TilePath(folder, names[i]).c_str());
  }
  return failure;
}

bool WriteTile(const fs::path& folder, const std::string& name, ByteView png) {
  const fs::path path = TilePath(folder, name);
  int file = OpenOld(path);
  if (file < 0) file = OpenNew(path);
  if (file < 0) return false;
  const bool written = WriteAll(file, png);
  // The last bytes may fail only when the file is closed.
  if (::close(file) == 0 && written) return true;
  std::error_code ignored;
  if (::unlink(path.c_str()) != 0) fs::resize_file(path, 0, ignored);
  return false;
}

std::string FindTile(const fs::path& folder, std::string_view suffix) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.size() == kTileNameSize + kEnding.size() && name.ends_with(kEnding) &&
        name.substr(kGenerationSize, kTileSuffixSize) == suffix && !IsDirectory(*entry)) {
      return name;
    }
  }
  return {};
}

}  // namespace pallomir
