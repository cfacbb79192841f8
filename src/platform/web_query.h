#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace pallomir {

/// Asks the web site, one question at a time. Never blocks.
class WebQuery {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{4} * 1024 * 1024;  ///< of an answer
  static constexpr int kTimeOutSeconds = 75;

  struct Answer {
    int status = 0;     ///< of HTTP; 0 where there was no answer
    std::string body;   ///< also of a refusal
    std::string error;  ///< why there is no answer, or not all of it; else empty
  };

  virtual ~WebQuery() = default;
  /// `address` is a whole HTTP address. `then` comes once, from the event loop, unless it is cancelled. A
  /// question before this one is cancelled.
  virtual void Get(const std::string& address, std::function<void(const Answer&)> then) = 0;
  /// Nothing is told any more.
  virtual void Cancel() = 0;
};

}  // namespace pallomir
