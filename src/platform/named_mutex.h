#pragma once

#include <cstdint>
#include <string>

namespace pallomir {

/// A mutex that all processes of the logged-in user know by its name. It is gone when its owner ends, however
/// it ends.
class NamedMutex {
 public:
  virtual ~NamedMutex() = default;
  /// Whether another process owns it now.
  virtual bool IsOwnedElsewhere(const std::string& name) = 0;
  /// Creates and owns it. False when that failed.
  virtual bool Create(const std::string& name) = 0;
  /// 0, or the system's error code. Without an owned mutex it fails.
  virtual int Release() = 0;
  virtual void Close() = 0;
  virtual std::int64_t Handle() const = 0;
};

}  // namespace pallomir
