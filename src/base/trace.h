#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pallomir {

/// The progress trace, for developers: each line begins with the seconds since the first one ("   1.250 ").
class Trace {
 public:
  /// `seconds` is a clock that only goes forward, `sink` takes one line without its end.
  Trace(std::function<double()> seconds, std::function<void(const std::string&)> sink);

  void Line(std::string_view text);

 private:
  std::function<double()> seconds_;
  std::function<void(const std::string&)> sink_;
  std::optional<double> first_;
};

}  // namespace pallomir
