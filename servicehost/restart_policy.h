#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace pallomir::servicehost {

/// How long to wait before a station that failed is started again: 1 s, then twice as long each time up to a
/// minute, until it has run for a while again.
class RestartPolicy {
 public:
  static constexpr int kMaxQuickFailures = 10;
  static constexpr std::chrono::seconds kLongestDelay{60};
  /// A station that has run this long was well.
  static constexpr std::chrono::seconds kQuick{60};

  /// Nothing when it has failed so often in a row that it has to be given up.
  std::optional<std::chrono::seconds> AfterFailure(std::chrono::seconds ranFor) {
    if (ranFor >= kQuick) quickFailures_ = 0;
    if (++quickFailures_ > kMaxQuickFailures) return std::nullopt;
    return std::min(kLongestDelay, std::chrono::seconds(1 << (quickFailures_ - 1)));
  }

 private:
  int quickFailures_ = 0;
};

}  // namespace pallomir::servicehost
