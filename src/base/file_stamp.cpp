#include "base/file_stamp.h"

#include <sys/stat.h>

namespace pallomir {

FileStamp StampOf(const struct stat& status) {
  return {status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

}  // namespace pallomir
