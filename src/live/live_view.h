#pragma once

#include <functional>
#include <string>

namespace pallomir {

/// What is seen of live mode, in the caption line.
class LiveView {
 public:
  virtual ~LiveView() = default;

  /// `word` is empty while nothing is live; `tip` says what pressing it does, which is `chosen`.
  virtual void ShowLive(const std::string& word, const std::string& tip, std::function<void()> chosen) = 0;
};

}  // namespace pallomir
