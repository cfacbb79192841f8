#include "window/timeline_frame_widget.h"

#include <QVBoxLayout>

#include "timeline/timeline_info_widget.h"
#include "timeline/timeline_strip_widget.h"

namespace pallomir {

TimelineFrame::TimelineFrame(QWidget* window, const QWidget* mapArea)
    : QFrame(window),
      mapArea_(mapArea),
      strip_(new TimelineStrip(this)),
      frameTimelineInfo_(new TimelineInfo(window)) {
  setObjectName("frameTimeLine");
  auto* inside = new QVBoxLayout(this);
  inside->setContentsMargins(0, 0, 0, 0);
  inside->addWidget(strip_);
}

int TimelineFrame::FitHeight(int windowHeight) {
  strip_->setFixedHeight(strip_->HeightIn(windowHeight));
  return isHidden() ? 0 : strip_->height();
}

bool TimelineFrame::IsTimelineVisible() const { return !isHidden(); }
void TimelineFrame::ShowTimeline(bool visible) { setVisible(visible); }
void TimelineFrame::LayOutTimeline(std::size_t rows) { strip_->LayOutRows(static_cast<int>(rows)); }
int TimelineFrame::TimelineWidth() const { return strip_->ScaleWidth(); }
void TimelineFrame::ShowTimelinePicture(const TimelinePicture& picture) { strip_->Redraw(picture); }

void TimelineFrame::ShowTimelineInfo(const std::string& text) {
  strip_->TellHover(QString::fromStdString(text));
  frameTimelineInfo_->ShowText(QString::fromStdString(text),
                               strip_->mapTo(window(), strip_->PointerPosition()), mapArea_->geometry());
}

void TimelineFrame::HideTimelineInfo() { frameTimelineInfo_->hide(); }
void TimelineFrame::PointAtTimeline(int row, int column) { strip_->PointAt(row, column); }

}  // namespace pallomir
