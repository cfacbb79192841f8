#include "timeline/timeline_strip_widget.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "timeline/strip_parts_widget.h"
#include "timeline/timeline_keys_widget.h"
#include "ui/accessible_widget.h"

namespace pallomir {
namespace {

constexpr int kReloadRight = 1;  // pixels between imgReload and the strip's right edge

}  // namespace

TimelineStrip::TimelineStrip(QWidget* parent)
    : QWidget(parent),
      scaleMarks_(new TickLabels(this)),
      lineTimeLineBorder_(new QFrame(this)),
      imgReload_(new ReloadImage(this)),
      scrollBar_(new QScrollBar(Qt::Vertical, this)),
      rowsView_(new QWidget(this)),
      rowsContent_(new QWidget(rowsView_)),
      shpZoomInterval_(new ZoomInterval(rowsContent_)),
      Shape_TimeMarker_(new QWidget(rowsContent_)),
      keys_(new TimelineKeys(rowsContent_)) {
  SetAccessible(this, {.role = QAccessible::Grouping});
  SetAccessible(rowsView_, {.role = QAccessible::Pane});
  SetAccessible(rowsContent_, {.role = QAccessible::List});
  setAccessibleName("Timeline");
  rowsView_->setAccessibleName("Rows of the timeline");
  rowsContent_->setAccessibleName("Units on the timeline");
  for (QWidget* widget : {static_cast<QWidget*>(this), rowsView_, rowsContent_})
    widget->setMouseTracking(true);
  lineTimeLineBorder_->setObjectName("lineTimeLineBorder");
  lineTimeLineBorder_->setFrameStyle(QFrame::HLine | QFrame::Plain);
  lineTimeLineBorder_->setForegroundRole(QPalette::Mid);
  Shape_TimeMarker_->setObjectName("Shape_TimeMarker");
  Shape_TimeMarker_->setAttribute(Qt::WA_TransparentForMouseEvents);
  Shape_TimeMarker_->setAutoFillBackground(true);
  Shape_TimeMarker_->setBackgroundRole(QPalette::Highlight);
  Shape_TimeMarker_->hide();
  scrollBar_->setAccessibleName("Rows of the timeline");
  scrollBar_->setFocusPolicy(Qt::NoFocus);
  scrollBar_->hide();
  connect(scrollBar_, &QScrollBar::valueChanged, this, [this](int value) {
    rowsContent_->move(0, -value);
    LeaveRows();
  });
  keys_->moved = [this](int row, int column) { ShowCursor(row, column); };
  keys_->left = [this] { LeaveRows(); };
  keys_->chosen = [this](double from, double to) {
    if (dragFinished) dragFinished(from, to);
  };
  connect(imgReload_, &QAbstractButton::clicked, this, [this] {
    if (layoutClicked) layoutClicked();
  });
}

TimelineStrip::~TimelineStrip() {
  left = nullptr;  // whoever listened may be half gone
}

QSize TimelineStrip::sizeHint() const { return {2 * TimelineHeaderHeight(), HeightIn(window()->height())}; }

const std::vector<ScaleMark>& TimelineStrip::ScaleMarks() const { return scaleMarks_->Marks(); }

void TimelineStrip::LayOutRows(int rows) {
  const TimelineLayout before = layout_;
  layout_ = TimelineLayout(width(), TimelineContentHeight(rows), rows);
  if (layout_.ScaleWidth() != before.ScaleWidth() || layout_.Rows() != before.Rows()) {
    CancelDrag();
    LeaveRows();
    updateGeometry();
  }
  picture_ = {};
  scaleMarks_->SetTicks({}, 0, 0, 0);
  const auto count = static_cast<std::size_t>(layout_.Rows());
  while (rows_.size() > count) rows_.pop_back();
  while (rows_.size() < count)
    rows_.push_back(std::make_unique<StripRowWidgets>(rowsContent_, static_cast<int>(rows_.size()) + 1));
  std::vector<TimelineKeys::Row> forKeys;
  for (const auto& row : rows_) forKeys.push_back({row->Time(), row->Data()});
  keys_->SetRows(std::move(forKeys));
  PlaceRows();
  PlaceParts();
}

// Rows count from the content's top, the header above them included; rowsContent_ begins below it.
void TimelineStrip::PlaceRows() {
  const auto belowHeader = [](PixelRect rect) {
    rect.top -= TimelineHeaderHeight();
    return rect;
  };
  for (int row = 1; row <= layout_.Rows(); ++row)
    rows_[static_cast<std::size_t>(row) - 1]->Place(belowHeader(layout_.Time(row)),
                                                    belowHeader(layout_.Data(row)));
}

void TimelineStrip::PlaceParts() {
  const int header = TimelineHeaderHeight();
  const int contentHeight = std::max(0, TimelineContentHeight(layout_.Rows()) - header);
  const int viewHeight = std::max(0, height() - header);
  const int margin = (width() - layout_.ScaleWidth()) / 2;
  lineTimeLineBorder_->setGeometry(0, 0, width(), 1);
  const QSize reload = imgReload_->sizeHint();
  imgReload_->setGeometry(width() - reload.width() - kReloadRight, 1, reload.width(), reload.height());
  scaleMarks_->setGeometry(0, 1, imgReload_->x(), header - 1);
  rowsView_->setGeometry(0, header, width(), viewHeight);
  rowsContent_->resize(width(), contentHeight);
  // In the margin right of the strips: the scale is as wide with the bar as without.
  scrollBar_->setGeometry(width() - margin + 1, header, margin - 1, viewHeight);
  scrollBar_->setRange(0, std::max(0, contentHeight - viewHeight));
  scrollBar_->setPageStep(viewHeight);
  scrollBar_->setSingleStep(header);
  scrollBar_->setVisible(scrollBar_->maximum() > 0);
  keys_->Place();
}

void TimelineStrip::Redraw(TimelinePicture picture) {
  const int rows = static_cast<int>(picture.rows.size());
  if (rows != layout_.Rows()) LayOutRows(rows);
  if (picture.width != layout_.ScaleWidth()) return;  // drawn for a width of before; the next one follows
  picture_ = std::move(picture);
  for (const auto& row : rows_) row->Show(picture_);
  keys_->Show(picture_);
  const std::vector<Tick> none;
  scaleMarks_->SetTicks(picture_.scale ? picture_.scale->ticks : none, layout_.Time(1).left, picture_.width,
                        scaleMarks_->width());
  hoveredRow_ = 0;  // another point may be under the resting pointer now
}

void TimelineStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (TimelineLayout(width(), 0, 0).ScaleWidth() != layout_.ScaleWidth()) {
    LayOutRows(layout_.Rows());
  } else {
    PlaceParts();
  }
}

QPoint TimelineStrip::ToContent(QPoint position) const {
  if (position.y() < TimelineHeaderHeight()) return position;
  return {position.x(), position.y() + scrollBar_->value()};
}

void TimelineStrip::Hover(QPoint position) {
  const QPoint content = ToContent(position);
  const int row = layout_.RowAt(content.x(), content.y());
  if (row == 0) return LeaveRows();
  const int column = content.x() - layout_.Time(row).left;
  if (row == hoveredRow_ && column == hoveredColumn_) return;
  hoveredRow_ = row;
  hoveredColumn_ = column;
  Shape_TimeMarker_->setGeometry(content.x(), 0, 1, rowsContent_->height());
  Shape_TimeMarker_->show();
  if (hovered) hovered(row, column);
}

void TimelineStrip::ShowCursor(int row, int column) {
  const PixelRect time = layout_.Time(row);
  const int top = time.top - TimelineHeaderHeight();
  const int bottom = top + time.height + layout_.Data(row).height;
  scrollBar_->setValue(std::max(std::min(scrollBar_->value(), top), bottom - rowsView_->height()));
  pointer_ = {time.left + column, time.top - scrollBar_->value()};
  hoveredRow_ = 0;
  if (hovered) hovered(row, column);
}

void TimelineStrip::TellHover(const QString& text) { keys_->Tell(text); }

void TimelineStrip::LeaveRows() {
  hoveredRow_ = 0;
  Shape_TimeMarker_->hide();
  if (left) left();
}

void TimelineStrip::PointAt(int row, int column) {
  if (row < 1 || row > layout_.Rows()) return;
  Shape_TimeMarker_->setGeometry(layout_.Time(row).left + column, 0, 1, rowsContent_->height());
  Shape_TimeMarker_->show();
  ShowCursor(row, column);
}

// Twips of the data strip. Beside the rows the pointer counts one pixel further left.
double TimelineStrip::DragX(const QMouseEvent& event) const {
  const double x = (event.position().x() - layout_.Time(1).left) * kTwipsPerPixel;
  return draggedOnRow_ ? x : x - kTwipsPerPixel;
}

void TimelineStrip::mousePressEvent(QMouseEvent* event) {
  const bool isLeft = event->button() == Qt::LeftButton;
  if (layout_.Rows() == 0 || (isLeft && drag_.IsActive())) return;
  if (isLeft) {
    const QPoint content = ToContent(event->position().toPoint());
    draggedOnRow_ = layout_.RowAt(content.x(), content.y()) > 0;
  }
  const bool wasActive = drag_.IsActive();
  drag_.TimelineMouse(MouseAction::kDown, isLeft, DragX(*event), kTwipsPerPixel * ScaleWidth());
  if (drag_.IsActive() && !wasActive) StartWatching();
}

void TimelineStrip::mouseMoveEvent(QMouseEvent* event) {
  pointer_ = event->position().toPoint();
  Hover(pointer_);
  drag_.TimelineMouse(MouseAction::kMove, event->buttons().testFlag(Qt::LeftButton), DragX(*event),
                      kTwipsPerPixel * ScaleWidth());
  ShowBand();
}

void TimelineStrip::mouseReleaseEvent(QMouseEvent* event) {
  const auto shares = drag_.TimelineMouse(MouseAction::kUp, event->button() == Qt::LeftButton, DragX(*event),
                                          kTwipsPerPixel * ScaleWidth());
  if (!drag_.IsActive()) DragEnded();
  if (shares && dragFinished) dragFinished(shares->from, shares->to);
}

void TimelineStrip::wheelEvent(QWheelEvent* event) {
  if (scrollBar_->isVisible()) {
    QCoreApplication::sendEvent(scrollBar_, event);
  } else {
    event->ignore();
  }
}

void TimelineStrip::leaveEvent(QEvent*) { LeaveRows(); }

void TimelineStrip::hideEvent(QHideEvent*) {
  CancelDrag();
  LeaveRows();
}

bool TimelineStrip::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::UngrabMouse) CancelDrag();
  return QWidget::event(event);
}

// Only during a drag, when Escape must reach the strip although another control has the keyboard.
void TimelineStrip::StartWatching() { qApp->installEventFilter(this); }

bool TimelineStrip::eventFilter(QObject* watched, QEvent* event) {
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && watched->isWidgetType()) {
    event->accept();
    CancelDrag();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void TimelineStrip::CancelDrag() {
  drag_.Cancel();
  DragEnded();
}

void TimelineStrip::DragEnded() {
  qApp->removeEventFilter(this);
  ShowBand();
}

void TimelineStrip::ShowBand() {
  const auto& band = drag_.Band();
  if (band)
    shpZoomInterval_->setGeometry(layout_.Time(1).left + band->left / kTwipsPerPixel, 0,
                                  band->width / kTwipsPerPixel, rowsContent_->height());
  shpZoomInterval_->setVisible(band.has_value());
}

}  // namespace pallomir
