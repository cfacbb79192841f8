#include "timeline/timeline_cursor.h"

#include <algorithm>

#include "base/civil_time.h"

namespace pallomir {
namespace {

std::string RangeText(const TimeWindow& range) {
  return DateTimeText(range.start) + " to " + DateTimeText(range.end);
}

}  // namespace

void TimelineCursor::SetScale(const TimeWindow& window, const std::optional<TickScale>& scale) {
  if (window != window_) anchor_.reset();
  window_ = window;
  stops_.clear();
  if (window.Length() <= 0) return;
  stops_.push_back({window.start, true});
  if (scale) {
    for (const Tick& tick : scale->ticks)
      if (tick.time > window.start && tick.time < window.end)
        stops_.push_back({tick.time, !tick.label.empty()});
  }
  stops_.push_back({window.end, true});
  time_ = std::clamp(time_, window.start, window.end);
}

void TimelineCursor::Move(bool forward, Step step, bool selects) {
  if (stops_.empty()) return;
  if (!selects) {
    anchor_.reset();
  } else if (!anchor_) {
    anchor_ = time_;
  }
  const auto isStop = [&](const Stop& stop) {
    const bool isAhead = forward ? stop.time > time_ : stop.time < time_;
    return isAhead && (step == Step::kTick || stop.hasLabel);
  };
  if (step == Step::kEnd) {
    time_ = forward ? window_.end : window_.start;
  } else if (forward) {
    const auto next = std::ranges::find_if(stops_, isStop);
    if (next != stops_.end()) time_ = next->time;
  } else {
    const auto next = std::find_if(stops_.rbegin(), stops_.rend(), isStop);
    if (next != stops_.rend()) time_ = next->time;
  }
}

std::optional<TimeWindow> TimelineCursor::Range() const {
  if (!anchor_ || *anchor_ == time_) return std::nullopt;
  return TimeWindow{std::min(*anchor_, time_), std::max(*anchor_, time_)};
}

std::optional<WindowShares> TimelineCursor::Shares() const {
  const auto range = Range();
  if (!range) return std::nullopt;
  const auto share = [this](Millis time) {
    return static_cast<double>(time - window_.start) / static_cast<double>(window_.Length());
  };
  return WindowShares{share(range->start), share(range->end)};
}

int TimelineCursor::Column(Millis time, int width) const {
  if (!IsDrawable(window_, width)) return 0;
  return static_cast<int>(std::clamp<std::int64_t>(ColumnOf(window_, width, time), 0, width - 1));
}

std::string TimelineRowText(const TimelinePicture& picture, std::size_t row) {
  const TimelineRow& unit = picture.rows[row];
  return unit.name + ", " + RangeText(picture.window) + ", " + std::to_string(unit.pointCount) +
         (unit.pointCount == 1 ? " point" : " points");
}

std::string TimelineCursorText(const TimelineCursor& cursor, const std::string& details) {
  const auto range = cursor.Range();
  std::string text = range ? "Selected " + RangeText(*range) : DateTimeText(cursor.Time());
  text += details.empty() ? ", no point here" : ", point " + details;
  if (range) text += ", Enter loads the selection";
  return text;
}

}  // namespace pallomir
