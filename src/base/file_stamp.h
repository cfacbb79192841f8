#pragma once

#include <cstdint>

struct stat;

namespace pallomir {

/// Tells a file or folder from what it was, or from another one in its place, without reading it: changed
/// content has another stamp, unless it is put in within the resolution of the file system's clock.
struct FileStamp {
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t seconds = 0;  ///< when it was changed
  std::int64_t nanoseconds = 0;
  bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(const struct stat& status);

}  // namespace pallomir
