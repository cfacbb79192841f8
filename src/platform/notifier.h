#pragma once

#include <functional>
#include <string>

namespace pallomir {

/// Shows notifications on the desktop. Where the desktop has none, nothing happens.
class Notifier {
 public:
  virtual ~Notifier() = default;
  /// `clicked` is called from the event loop, at most once.
  virtual void Notify(const std::string& title, const std::string& text, std::function<void()> clicked) = 0;
  /// No click is told any more.
  virtual void Close() = 0;
};

}  // namespace pallomir
