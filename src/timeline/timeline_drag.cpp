#include "timeline/timeline_drag.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "timeline/timeline_layout.h"

namespace pallomir {
namespace {

// Twips. The band shows before a release would zoom, so that a press by mistake can still be taken back.
constexpr int kBandBeyond = 45;
constexpr int kZoomFrom = 60;

int Position(double x, int width) {
  return static_cast<int>(std::lround(std::clamp(x + kTwipsPerPixel, 0.0, static_cast<double>(width))));
}

}  // namespace

std::optional<WindowShares> TimelineDrag::TimelineMouse(MouseAction action, bool left, double x, int width) {
  const int c = Position(x, std::max(0, width));
  switch (action) {
    case MouseAction::kDown:
      if (!left) break;
      active_ = true;
      anchor_ = c;
      break;
    case MouseAction::kMove:
      if (!active_) break;
      if (!left) {
        Cancel();  // the release went to somebody else
        break;
      }
      band_.reset();
      if (std::abs(c - anchor_) > kBandBeyond)
        band_ = RubberBand{std::min(c, anchor_), std::abs(c - anchor_) + kTwipsPerPixel};
      break;
    case MouseAction::kUp:
      if (active_ && left) return End(c, width);
      break;
  }
  return std::nullopt;
}

void TimelineDrag::Cancel() {
  active_ = false;
  band_.reset();
}

std::optional<WindowShares> TimelineDrag::End(int position, int width) {
  Cancel();
  if (std::abs(position - anchor_) < kZoomFrom) return std::nullopt;
  const auto share = [width](int c) { return static_cast<double>(c) / width; };
  return WindowShares{share(std::min(position, anchor_)), share(std::max(position, anchor_))};
}

}  // namespace pallomir
