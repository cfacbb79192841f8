#pragma once

#include <optional>

#include "timeline/time_window.h"

namespace pallomir {

/// Whether the time window follows the points while they come live, and how far. A window follows that held
/// the present when it was chosen; its end then goes on with the newest point, in steps, and its start stays.
/// All times are local.
class LiveWindow {
 public:
  /// This window is loaded, or live was switched on with it. One that has not been changed since the last
  /// call follows as before.
  void Take(const TimeWindow& window, Millis now);
  /// Live is switched off: the next window is judged anew.
  void Forget() { known_.reset(); }

  bool IsFollowing() const { return known_ && isFollowing_; }

  /// The end with which the window holds a point at `newest`; nothing where it stays. Rounded up to whole
  /// minutes, quarters or hours by the window's length, so that the strips are not scaled at every point.
  std::optional<Millis> EndFor(Millis newest);

  /// Until when points are wanted: a day ahead, where the window follows.
  Millis WantedUntil(const TimeWindow& window, Millis now) const;

 private:
  std::optional<TimeWindow> known_;
  bool isFollowing_ = false;
};

}  // namespace pallomir
