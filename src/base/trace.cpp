#include "base/trace.h"

#include <cstdio>
#include <utility>

namespace pallomir {

Trace::Trace(std::function<double()> seconds, std::function<void(const std::string&)> sink)
    : seconds_(std::move(seconds)), sink_(std::move(sink)) {}

void Trace::Line(std::string_view text) {
  const double now = seconds_();
  if (!first_) first_ = now;
  char number[32];
  std::snprintf(number, sizeof number, "%.3f ", now - *first_);
  char prefix[40];
  std::snprintf(prefix, sizeof prefix, "%8s", number);
  sink_(prefix + std::string(text));
}

}  // namespace pallomir
