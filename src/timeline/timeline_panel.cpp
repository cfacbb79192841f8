#include "timeline/timeline_panel.h"

#include <utility>
#include <vector>

#include "timeline/tick_scale.h"

namespace pallomir {

TimelinePanel::TimelinePanel(TimelineView& view, EventLoop& loop, Trace& trace, const DisplayedPoints& points,
                             const TimeWindow& window, const LocalClock& clock, Host host)
    : view_(view),
      trace_(trace),
      points_(points),
      window_(window),
      clock_(clock),
      host_(std::move(host)),
      tmrRedraw_(loop.CreateTimer("tmrRedraw", 1000, [this] { Redraw(); })),
      tmrTimelineInfo_(loop.CreateTimer("tmrTimelineInfo", 10'000, [this] { HideInfo(); })) {}

void TimelinePanel::Close() {
  isClosed_ = true;
  tmrRedraw_->SetEnabled(false);
  tmrTimelineInfo_->SetEnabled(false);
}

void TimelinePanel::Timeline_Resize() {
  if (host_.isMinimised() || !view_.IsTimelineVisible() || points_.UnitCount() == 0) {
    host_.settled();  // there is nothing to redraw that would tell so
    return;
  }
  trace_.Line("Timeline_Resize begin...");
  picture_ = {};  // until the redraw: its columns may be others now
  LayOutRows();
  tmrRedraw_->SetEnabled(true);
  trace_.Line("...end Timeline_Resize");
}

void TimelinePanel::DataCame() {
  if (!view_.IsTimelineVisible()) return host_.settled();
  trace_.Line("DataProcess is calling for redraw");
  tmrRedraw_->SetEnabled(true);
}

void TimelinePanel::Redraw() {
  trace_.Line("tmrRedraw_Timer begin");
  Timeline_Resize();
  tmrRedraw_->SetEnabled(false);
  std::vector<TimelineUnit> units;
  for (std::size_t k = 1; k <= points_.UnitCount(); ++k) {
    units.push_back({points_.Description(k), UnitColour(k), points_.Points(k)});
  }
  picture_ = DrawTimeline(window_, clock_.OffsetMinutes(), view_.TimelineWidth(), units);
  view_.ShowTimelinePicture(picture_);
  host_.settled();
  trace_.Line("...end tmrRedraw_Timer");
}

void TimelinePanel::Hovered(int row, int column) {
  const auto k = static_cast<std::size_t>(row);
  if (isClosed_ || row < 1 || k > points_.UnitCount()) return;
  const auto index = static_cast<std::size_t>(PointUnder(picture_, row, column));  // none is beyond all
  view_.ShowTimelineInfo(points_.HoverTextOf(k, index));
  if (points_.Find(k, index)) host_.pointHovered(k, index);
  tmrTimelineInfo_->SetEnabled(true);
}

void TimelinePanel::HideInfo() {
  tmrTimelineInfo_->SetEnabled(false);
  view_.HideTimelineInfo();
}

void TimelinePanel::PointAt(std::size_t k, Millis local) {
  const bool isSeen = !isClosed_ && view_.IsTimelineVisible() && !host_.isMinimised();
  if (!isSeen || k < 1 || k > points_.UnitCount() || local < window_.start || local >= window_.end) return;
  const int width = view_.TimelineWidth();
  if (!IsDrawable(window_, width)) return;
  view_.PointAtTimeline(static_cast<int>(k), static_cast<int>(ColumnOf(window_, width, local)));
}

}  // namespace pallomir
