#pragma once

#include <filesystem>
#include <utility>

#include "platform/named_mutex.h"

namespace pallomir {

/// The mutex as a lock on a file beside what it guards (see SharedFile). The system drops the lock with the
/// process, so a killed owner leaves nothing behind; the empty file stays and means nothing.
class LockFileMutex : public NamedMutex {
 public:
  /// Guards what lies in `folder`.
  explicit LockFileMutex(std::filesystem::path folder) : folder_(std::move(folder)) {}
  ~LockFileMutex() override;
  LockFileMutex(const LockFileMutex&) = delete;
  LockFileMutex& operator=(const LockFileMutex&) = delete;

  bool IsOwnedElsewhere(const std::string& name) override;
  bool Create(const std::string& name) override;
  /// EPERM when nothing is owned.
  int Release() override;
  void Close() override;
  /// The file descriptor, -1 for none.
  std::int64_t Handle() const override { return file_; }

 private:
  std::filesystem::path folder_;
  int file_ = -1;
  bool owned_ = false;
};

}  // namespace pallomir
