#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace pallomir::station {

/// Takes one line without a line end. Called on the station's own thread only.
using Log = std::function<void(const std::string&)>;

/// Passes on at most one line in ten seconds and counts the rest, so that a flood of requests can't fill the
/// disk.
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
