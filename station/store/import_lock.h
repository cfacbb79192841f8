#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace pallomir::station {

/// While one exists and has no problem, no other import changes anything in the data folder. Functions that
/// change something there take it as an argument, so that they can't be called without.
class ImportLock {
 public:
  /// Creates the data folder if it is missing. Waits for other imports, but not longer than `patience`.
  ImportLock(std::filesystem::path dataFolder, std::chrono::milliseconds patience);
  ~ImportLock();
  ImportLock(const ImportLock&) = delete;
  ImportLock& operator=(const ImportLock&) = delete;

  /// Why nothing may be changed; empty if the lock is held.
  const std::string& Problem() const { return problem_; }

  const std::filesystem::path& DataFolder() const { return dataFolder_; }

  /// Where an import builds what it then moves into place: on the same file system.
  std::filesystem::path Incoming() const { return dataFolder_ / ".incoming"; }

 private:
  void Take(std::chrono::milliseconds patience);

  std::filesystem::path dataFolder_;
  std::string problem_;
  int fd_ = -1;
};

/// Says what is at `path` if it is neither a plain folder nor nothing; otherwise empty. An import does not
/// follow links: what they lead to belongs to somebody else.
std::string NoPlainFolder(const std::filesystem::path& path);

}  // namespace pallomir::station
