#pragma once

#include <optional>
#include <string>
#include <vector>

#include "timeline/data_strip.h"
#include "timeline/timeline_drag.h"

namespace pallomir {

/// The keyboard on the timeline: a moment of the time window, and a range from where it was when it began to
/// select. It goes from tick to tick or from label to label; the window's two ends are stops as well.
class TimelineCursor {
 public:
  enum class Step { kTick, kLabel, kEnd };

  /// The cursor stays at its moment as far as the window has it. A range of another window goes.
  void SetScale(const TimeWindow& window, const std::optional<TickScale>& scale);

  /// To the next stop, forward or back; `selects` makes the range follow or begin.
  void Move(bool forward, Step step, bool selects);
  void DropRange() { anchor_.reset(); }

  Millis Time() const { return time_; }
  /// What is selected, if it has any length.
  std::optional<TimeWindow> Range() const;
  /// The same as shares of the window: what a drag over it would choose.
  std::optional<WindowShares> Shares() const;
  /// The pixel column of a moment on a strip this wide; the window's end falls into the last one.
  int Column(Millis time, int width) const;

 private:
  struct Stop {
    Millis time;
    bool hasLabel;
  };

  TimeWindow window_;
  std::vector<Stop> stops_;  // times ascend
  Millis time_ = 0;
  std::optional<Millis> anchor_;
};

/// What a row is called: its unit, the window and how many points there are in it.
std::string TimelineRowText(const TimelinePicture& picture, std::size_t row);

/// What is said at the cursor; `details` are those of the point there, "" for none.
std::string TimelineCursorText(const TimelineCursor& cursor, const std::string& details);

}  // namespace pallomir
