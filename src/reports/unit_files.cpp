#include "reports/unit_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace pallomir {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

// A link counts as what it leads to.
bool IsPlainFile(int folder, const dirent& entry) {
  if (entry.d_type == DT_REG) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  struct stat status {};
  return ::fstatat(folder, entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

void UnitFiles::Close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

std::error_code UnitFiles::OpenFolder() {
  Close();
  opened_ = {};
  descriptor_ = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0) return LastError();
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) return LastError();
  opened_ = StampOf(status);
  return {};
}

std::error_code UnitFiles::ListOpened() {
  names_.clear();
  const int copy = ::fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
  DIR* folder = copy < 0 ? nullptr : ::fdopendir(copy);
  if (folder == nullptr) {
    const std::error_code error = LastError();
    if (copy >= 0) ::close(copy);
    return error;
  }
  errno = 0;
  while (const dirent* entry = ::readdir(folder)) {
    if (IsPlainFile(descriptor_, *entry)) names_.emplace_back(entry->d_name);
    errno = 0;
  }
  const std::error_code error = LastError();
  ::closedir(folder);
  if (!error) listed_ = opened_;
  std::ranges::sort(names_);
  return error;
}

std::error_code UnitFiles::List() {
  listed_ = {};
  const std::error_code error = Open();
  Close();
  return error;
}

std::error_code UnitFiles::Open() {
  std::error_code error = OpenFolder();
  if (!error && opened_ != listed_) error = ListOpened();
  if (error) {
    Close();
    names_.clear();
  }
  return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
}

}  // namespace pallomir
