#include "timeline/timeline_info_widget.h"

#include <QLabel>

#include "timeline/timeline_layout.h"

namespace pallomir {
namespace {

constexpr int kPadding = 6;
constexpr int kLongestLine = 480;  // pixels; longer lines wrap

}  // namespace

TimelineInfo::TimelineInfo(QWidget* mainWindow) : QFrame(mainWindow), lblTimelineInfo_(new QLabel(this)) {
  setObjectName("frameTimelineInfo");
  setAccessibleName("Data point on the timeline");
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setFocusPolicy(Qt::NoFocus);
  setMouseTracking(true);
  lblTimelineInfo_->setObjectName("lblTimelineInfo");
  lblTimelineInfo_->setTextFormat(Qt::PlainText);
  lblTimelineInfo_->setForegroundRole(QPalette::ToolTipText);
  lblTimelineInfo_->setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void TimelineInfo::ShowText(const QString& text, QPoint pointer, const QRect& mapArea) {
  lblTimelineInfo_->setText(text);
  lblTimelineInfo_->setWordWrap(false);
  const int widest = std::min(kLongestLine, mapArea.width() - 2 * kPadding);
  QSize textSize = lblTimelineInfo_->sizeHint();
  if (textSize.width() > widest) {
    lblTimelineInfo_->setWordWrap(true);
    textSize = {widest, lblTimelineInfo_->heightForWidth(widest)};
  }
  const PixelRect place = PlaceBeside(pointer.x(), pointer.y(),
                                      {textSize.width() + 2 * kPadding, textSize.height() + 2 * kPadding},
                                      {mapArea.x(), mapArea.y(), mapArea.width(), mapArea.height()});
  lblTimelineInfo_->setGeometry(kPadding, kPadding, textSize.width(), textSize.height());
  setGeometry(place.left, place.top, place.width, place.height);
  raise();
  show();
}

void TimelineInfo::enterEvent(QEnterEvent*) { hide(); }

void TimelineInfo::mouseMoveEvent(QMouseEvent*) { hide(); }

}  // namespace pallomir
