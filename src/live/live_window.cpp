#include "live/live_window.h"

#include <algorithm>

namespace pallomir {
namespace {

// A window that ends now was chosen a moment ago.
constexpr Millis kGrace = kMinute;

// How far beyond a point the end goes at most: a twenty-fourth of the window, but no less than a minute.
Millis StepOf(Millis length) {
  Millis step = kMinute;
  for (const Millis longer : {5 * kMinute, 15 * kMinute, kHour}) {
    if (longer * 24 <= length) step = longer;
  }
  return step;
}

}  // namespace

void LiveWindow::Take(const TimeWindow& window, Millis now) {
  if (known_ == window) return;
  known_ = window;
  isFollowing_ = window.start <= now && now <= window.end + kGrace;
}

std::optional<Millis> LiveWindow::EndFor(Millis newest) {
  if (!IsFollowing() || newest <= known_->end) return std::nullopt;
  const Millis step = StepOf(newest - known_->start);
  known_->end = std::min((newest + step - 1) / step * step, LastMoment());
  return known_->end;
}

Millis LiveWindow::WantedUntil(const TimeWindow& window, Millis now) const {
  if (!IsFollowing()) return window.end;
  return std::min(std::max(window.end, now + kDay), LastMoment());
}

}  // namespace pallomir
