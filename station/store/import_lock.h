#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace pallomir::station {

/// While it lives and has no problem, no other import changes anything in the data folder. Whoever changes
/// something there takes one, so that nothing is done without.
class ImportLock {
 public:
  /// Creates the data folder where it is missing. Waits for other imports, not longer than `patience`.
  ImportLock(std::filesystem::path dataFolder, std::chrono::milliseconds patience);
  ~ImportLock();
  ImportLock(const ImportLock&) = delete;
  ImportLock& operator=(const ImportLock&) = delete;

  /// Why nothing may be changed; empty when all is well.
  const std::string& Problem() const { return problem_; }

  const std::filesystem::path& DataFolder() const { return dataFolder_; }

  /// Where an import builds what it then puts in its place: in the same file system.
  std::filesystem::path Incoming() const { return dataFolder_ / ".incoming"; }

 private:
  void Take(std::chrono::milliseconds patience);

  std::filesystem::path dataFolder_;
  std::string problem_;
  int fd_ = -1;
};

/// What there is in place of a plain folder; empty where there is one or nothing. An import keeps away from
/// links: what they lead to belongs to somebody else.
std::string NoPlainFolder(const std::filesystem::path& path);

}  // namespace pallomir::station
