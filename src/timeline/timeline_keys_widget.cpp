#include "timeline/timeline_keys_widget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "timeline/strip_parts_widget.h"

namespace pallomir {
namespace {

constexpr int kLineWidth = 3;
constexpr int kFrameWidth = 2;

/// Lies over the rows without taking the mouse.
class Overlay : public QWidget {
 public:
  Overlay(QWidget* parent, const char* name) : QWidget(parent) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }
};

/// The strips are light under every palette: black edges keep the line visible on them.
class CursorLine : public Overlay {
 public:
  using Overlay::Overlay;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.fillRect(rect().adjusted(1, 0, -1, 0), palette().color(QPalette::Highlight));
  }
};

class RowFrame : public Overlay {
 public:
  using Overlay::Overlay;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QPen pen(palette().color(QPalette::Highlight), kFrameWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
};

}  // namespace

TimelineKeys::TimelineKeys(QWidget* content)
    : QObject(content),
      line_(new CursorLine(content, "lineCursor")),
      range_(new ZoomInterval(content)),
      frame_(new RowFrame(content, "frameRow")) {
  range_->setObjectName("shpSelection");
}

void TimelineKeys::SetRows(std::vector<Row> rows) {
  rows_ = std::move(rows);
  current_ = rows_.empty() ? 0 : std::min(current_, rows_.size() - 1);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    rows_[i].data->setFocusPolicy(i == current_ ? Qt::TabFocus : Qt::NoFocus);
    rows_[i].data->removeEventFilter(this);
    rows_[i].data->installEventFilter(this);
  }
  Place();
}

void TimelineKeys::Show(const TimelinePicture& picture) {
  cursor_.SetScale(picture.window, picture.scale);
  Place();
}

bool TimelineKeys::HasFocus() const { return current_ < rows_.size() && Strip().hasFocus(); }

void TimelineKeys::Place() {
  const bool isShown = HasFocus();
  const auto range = cursor_.Range();
  for (QWidget* part : {line_, frame_}) part->setVisible(isShown);
  range_->setVisible(isShown && range);
  if (!isShown) return;
  const QWidget& strip = Strip();
  const int height = line_->parentWidget()->height();
  const auto x = [&](Millis time) { return strip.x() + cursor_.Column(time, strip.width()); };
  line_->setGeometry(x(cursor_.Time()) - kLineWidth / 2, 0, kLineWidth, height);
  if (range) range_->setGeometry(QRect(QPoint(x(range->start), 0), QPoint(x(range->end), height - 1)));
  frame_->setGeometry(rows_[current_]
                          .time->geometry()
                          .united(strip.geometry())
                          .adjusted(-kFrameWidth, 0, kFrameWidth, kFrameWidth));
  for (QWidget* part : {range_, line_, frame_}) part->raise();
}

bool TimelineKeys::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      MakeCurrent(*watched);
      Report();
      break;
    case QEvent::FocusOut: {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) Leave();
      break;
    }
    case QEvent::KeyPress:
      if (KeyPressed(*static_cast<QKeyEvent*>(event))) return true;
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

bool TimelineKeys::KeyPressed(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
      GoToRow(current_ == 0 ? 0 : current_ - 1);
      return true;
    case Qt::Key_Down:
      GoToRow(std::min(current_ + 1, rows_.size() - 1));
      return true;
    case Qt::Key_Escape:
      cursor_.DropRange();
      Report();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Choose();
      return true;
    default:
      return MoveCursor(event);
  }
}

bool TimelineKeys::MoveCursor(const QKeyEvent& event) {
  const int key = event.key();
  const bool isForward = key == Qt::Key_Right || key == Qt::Key_End;
  if (!isForward && key != Qt::Key_Left && key != Qt::Key_Home) return false;
  using Step = TimelineCursor::Step;
  const Step step = key == Qt::Key_Home || key == Qt::Key_End         ? Step::kEnd
                    : event.modifiers().testFlag(Qt::ControlModifier) ? Step::kLabel
                                                                      : Step::kTick;
  cursor_.Move(isForward, step, event.modifiers().testFlag(Qt::ShiftModifier));
  Report();
  return true;
}

void TimelineKeys::GoToRow(std::size_t row) {
  if (row != current_) rows_[row].data->setFocus(Qt::OtherFocusReason);
}

// However it got the focus: Tab comes back to it.
void TimelineKeys::MakeCurrent(const QObject& strip) {
  const auto row = std::ranges::find(rows_, &strip, &Row::data);
  if (row == rows_.end()) return;
  Strip().setFocusPolicy(Qt::NoFocus);
  current_ = static_cast<std::size_t>(row - rows_.begin());
  Strip().setFocusPolicy(Qt::TabFocus);
}

// The picture of the window to come is not there yet: the shares are used once, and what was told of a point
// goes.
void TimelineKeys::Choose() {
  const auto shares = cursor_.Shares();
  cursor_.DropRange();
  Place();
  if (!shares) return;
  if (left) left();
  if (chosen) chosen(shares->from, shares->to);
}

// Said as the row's description: those who read the screen aloud read it again when it changes.
void TimelineKeys::Report() {
  Place();
  if (!HasFocus()) return;
  details_.clear();
  isReporting_ = true;
  if (moved) moved(static_cast<int>(current_) + 1, cursor_.Column(cursor_.Time(), Strip().width()));
  isReporting_ = false;
  Strip().setAccessibleDescription(
      QString::fromStdString(TimelineCursorText(cursor_, details_.toStdString())));
}

void TimelineKeys::Tell(const QString& hoverText) {
  // The first line names the unit, as the row does.
  if (isReporting_) details_ = hoverText.section('\n', 1).replace('\n', ", ");
}

void TimelineKeys::Leave() {
  const auto hasFocus = [](const Row& row) { return row.data->hasFocus(); };
  if (std::ranges::any_of(rows_, hasFocus)) return;  // on the way to another row
  Place();
  cursor_.DropRange();
  if (left) left();
}

}  // namespace pallomir
