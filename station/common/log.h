#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace pallomir::station {

/// Takes one line, without its end. Called from the station's own thread only.
using Log = std::function<void(const std::string&)>;

/// Lets one line through a while and counts the others, so that a flood from outside can't fill a disk.
class RateLimitedLog {
 public:
  explicit RateLimitedLog(Log log) : log_(std::move(log)) {}

  void operator()(const std::string& line) {
    const auto now = std::chrono::steady_clock::now();
    if (now < quietUntil_) {
      ++heldBack_;
      return;
    }
    quietUntil_ = now + kQuietTime;
    log_(heldBack_ == 0 ? line : line + " (and " + std::to_string(heldBack_) + " more like it before)");
    heldBack_ = 0;
  }

 private:
  static constexpr std::chrono::seconds kQuietTime{10};

  Log log_;
  std::chrono::steady_clock::time_point quietUntil_{};
  std::uint64_t heldBack_ = 0;
};

}  // namespace pallomir::station
