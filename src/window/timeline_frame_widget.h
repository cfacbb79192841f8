#pragma once

#include <QFrame>

#include "timeline/timeline_panel.h"

namespace pallomir {

class TimelineInfo;
class TimelineStrip;

/// The frame under the map with the timeline, and the text that describes what is under the pointer there.
class TimelineFrame : public QFrame, public TimelineView {
 public:
  /// `mapArea` is where the text lies.
  TimelineFrame(QWidget* window, const QWidget* mapArea);

  TimelineStrip& Strip() { return *strip_; }
  /// Takes the height that belongs to the window's; 0 while it is hidden.
  int FitHeight(int windowHeight);

  bool IsTimelineVisible() const override;
  void ShowTimeline(bool visible) override;
  void LayOutTimeline(std::size_t rows) override;
  int TimelineWidth() const override;
  void ShowTimelinePicture(const TimelinePicture& picture) override;
  void ShowTimelineInfo(const std::string& text) override;
  void HideTimelineInfo() override;
  void PointAtTimeline(int row, int column) override;

 private:
  const QWidget* mapArea_;
  TimelineStrip* strip_;
  TimelineInfo* frameTimelineInfo_;
};

}  // namespace pallomir
