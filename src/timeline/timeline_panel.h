#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "base/trace.h"
#include "platform/event_loop.h"
#include "timeline/data_strip.h"
#include "timeline/displayed_points.h"

namespace pallomir {

/// The strips under the map. The main window implements it.
class TimelineView {
 public:
  virtual ~TimelineView() = default;
  virtual bool IsTimelineVisible() const = 0;  ///< `frameTimeLine`
  virtual void ShowTimeline(bool visible) = 0;
  virtual void LayOutTimeline(std::size_t rows) = 0;
  /// Columns of the strips as they are laid out now.
  virtual int TimelineWidth() const = 0;
  virtual void ShowTimelinePicture(const TimelinePicture& picture) = 0;
  virtual void ShowTimelineInfo(const std::string& text) = 0;  ///< beside the pointer
  virtual void HideTimelineInfo() = 0;
  /// As if the pointer came there: row from 1.
  virtual void PointAtTimeline(int row, int column) = 0;
};

/// The timeline: a strip for each displayed unit, redrawn a second after the last cause, and the box that
/// describes the point under the pointer.
class TimelinePanel {
 public:
  struct Host {
    std::function<bool()> isMinimised;  ///< the main window
    std::function<void()> settled;      ///< no redraw is to come, or the last one is done
    std::function<void(std::size_t k, std::size_t index)> pointHovered;  ///< unit from 1, point from 0
  };

  /// `window` is the time window, local. All arguments outlive the panel.
  TimelinePanel(TimelineView& view, EventLoop& loop, Trace& trace, const DisplayedPoints& points,
                const TimeWindow& window, const LocalClock& clock, Host host);

  /// Nothing is drawn or shown from here on.
  void Close();

  /// Lays the rows out and draws them a second later; also the click on `imgReload`.
  void Timeline_Resize();
  /// The displayed units are others.
  void LayOutRows() { view_.LayOutTimeline(points_.UnitCount()); }
  /// Data have come: they are drawn in a second, if the timeline is seen.
  void DataCame();
  /// Points may have another index than the picture says.
  void PointsMoved() { picture_.rows.clear(); }
  bool IsRedrawDue() const { return tmrRedraw_->IsEnabled(); }

  // What the user does.
  void Hovered(int row, int column);  ///< row from 1
  void HideInfo();

  /// Points at a moment of unit k, if the window has it.
  void PointAt(std::size_t k, Millis local);

 private:
  void Redraw();

  TimelineView& view_;
  Trace& trace_;
  const DisplayedPoints& points_;
  const TimeWindow& window_;
  const LocalClock& clock_;
  Host host_;
  bool isClosed_ = false;
  TimelinePicture picture_;
  std::unique_ptr<Timer> tmrRedraw_;
  std::unique_ptr<Timer> tmrTimelineInfo_;
};

}  // namespace pallomir
