#include "timeline/strip_parts_widget.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <numeric>

#include "timeline/strip_images_widget.h"
#include "timeline/timeline_cursor.h"
#include "ui/accessible_widget.h"
#include "ui/keyboard_tip_widget.h"

namespace pallomir {
namespace {

constexpr int kLabelFontPixels = 11;
constexpr int kLabelGap = 3;  // pixels that two labels keep between them
constexpr int kMarkWidth = 6;

QString Indexed(const char* name, int index) { return QString("%1(%2)").arg(name).arg(index); }

// Escaped and marked as rich text, or a name with tags in it would be shown as if it were some.
QString TipOf(const std::string& name) {
  return name.empty() ? QString() : "<span>" + QString::fromStdString(name).toHtmlEscaped() + "</span>";
}

QRect ToQt(const PixelRect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

/// In words where there is one.
QString ColourName(std::uint32_t rgb) {
  const QColor colour = QColor::fromRgb(rgb);
  for (const QString& name : QColor::colorNames())
    if (QColor(name).rgb() == colour.rgb()) return name;
  return colour.name();
}

}  // namespace

ImageWidget::ImageWidget(QWidget* parent, const QString& name) : QWidget(parent) {
  setObjectName(name);
  setMouseTracking(true);
}

void ImageWidget::SetImage(Draw draw) {
  draw_ = std::move(draw);
  image_ = {};
  update();
}

void ImageWidget::paintEvent(QPaintEvent*) {
  if (!draw_) return;
  if (image_.isNull() || image_.devicePixelRatio() != devicePixelRatioF())
    image_ = draw_(devicePixelRatioF());
  if (!image_.isNull()) QPainter(this).drawImage(QPoint(0, 0), image_);
}

UnitMark::UnitMark(QWidget* parent, const QString& name) : QWidget(parent) {
  setObjectName(name);
  setMouseTracking(true);
}

void UnitMark::SetColour(std::uint32_t rgb) {
  colour_ = rgb;
  update();
}

// The outline keeps the dark colours visible on a dark desktop.
void UnitMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor edge = palette().color(QPalette::WindowText);
  edge.setAlpha(90);
  painter.fillRect(rect(), QColor::fromRgb(colour_));
  painter.setPen(edge);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

StripRowWidgets::StripRowWidgets(QWidget* parent, int row)
    : index_(static_cast<std::size_t>(row - 1)),
      picTime_(new ImageWidget(parent, Indexed("picTime", row))),
      picData_(new ImageWidget(parent, Indexed("picData", row))),
      pointer_(new UnitMark(parent, Indexed("Pointer", row))) {
  for (QWidget* widget :
       {static_cast<QWidget*>(picTime_), static_cast<QWidget*>(picData_), static_cast<QWidget*>(pointer_)}) {
    widget->lower();  // under the rubber band
    widget->show();
  }
  SetAccessible(picTime_, {.role = QAccessible::Graphic});
  SetAccessible(picData_, {.role = QAccessible::ListItem, .isReachable = true});
  SetAccessible(pointer_, {.role = QAccessible::Graphic});
}

// Not at once: one of them may be handling an event.
StripRowWidgets::~StripRowWidgets() {
  picTime_->Clear();
  picData_->Clear();
  for (QWidget* widget :
       {static_cast<QWidget*>(picTime_), static_cast<QWidget*>(picData_), static_cast<QWidget*>(pointer_)}) {
    widget->hide();
    widget->setObjectName({});
    widget->deleteLater();
  }
}

void StripRowWidgets::Place(const PixelRect& time, const PixelRect& data) {
  picTime_->setGeometry(ToQt(time));
  picData_->setGeometry(ToQt(data));
  pointer_->setGeometry(time.left - kMarkWidth - 2, time.top, kMarkWidth, time.height + data.height);
  picTime_->Clear();
  picData_->Clear();
}

// The picture outlives the row's use of it: both belong to the strip.
void StripRowWidgets::Show(const TimelinePicture& picture) {
  const TimelineRow& row = picture.rows[index_];
  const QString name = QString::fromStdString(row.name);
  picTime_->setAccessibleName("Time scale of " + name);
  picData_->setAccessibleName(QString::fromStdString(TimelineRowText(picture, index_)));
  pointer_->setAccessibleName("Colour of " + name + ": " + ColourName(row.colour));
  pointer_->SetColour(row.colour);
  pointer_->setToolTip(TipOf(row.name));
  picTime_->SetImage(
      [&picture, this](double ratio) { return TimeScaleImage(picture, picTime_->height(), ratio); });
  picData_->SetImage(
      [&picture, this](double ratio) { return DataStripImage(picture, index_, picData_->height(), ratio); });
}

TickLabels::TickLabels(QWidget* parent) : QWidget(parent) {
  setObjectName("ScaleMark");
  SetAccessible(this, {.role = QAccessible::StaticText});
  setAccessibleName("Time scale");
  setMouseTracking(true);
  QFont small = font();
  small.setPixelSize(kLabelFontPixels);
  setFont(small);
}

QRect TickLabels::PlaceOf(int centre, const QString& text, int right) const {
  const int width = fontMetrics().horizontalAdvance(text);
  const int left = std::max(0, std::min(centre - width / 2, right - width));
  return {left, 0, width, height()};
}

void TickLabels::SetTicks(const std::vector<Tick>& ticks, int stripLeft, int stripWidth, int right) {
  marks_.clear();
  std::vector<int> ranks;
  QStringList said;
  for (const Tick& tick : ticks) {
    if (tick.label.empty()) continue;
    const QString text = QString::fromStdString(tick.label);
    marks_.push_back({tick.column, text, PlaceOf(stripLeft + tick.column, text, right), false});
    ranks.push_back(tick.rank);
    said << text;
  }
  setAccessibleDescription(said.join(", "));
  // The coarse ones first: where the days of two months meet, the labels would lie over one another.
  std::vector<std::size_t> order(marks_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&ranks](std::size_t a, std::size_t b) { return ranks[a] > ranks[b]; });
  QRegion taken;
  for (const std::size_t i : order) {
    ScaleMark& mark = marks_[i];
    const int centre = stripLeft + mark.column;
    // At the very end there is no line that the label could stand beside.
    const bool isAtItsTick =
        mark.column == stripWidth || (centre >= mark.place.left() && centre <= mark.place.right());
    mark.shown = isAtItsTick && !taken.intersects(mark.place);
    if (mark.shown) taken += mark.place.adjusted(-kLabelGap, 0, kLabelGap, 0);
  }
  update();
}

void TickLabels::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  for (const ScaleMark& mark : marks_)
    if (mark.shown) painter.drawText(mark.place, Qt::AlignCenter | Qt::TextDontClip, mark.text);
}

ReloadImage::ReloadImage(QWidget* parent) : QAbstractButton(parent) {
  setObjectName("imgReload");
  setToolTip("Reload Timeline");
  setAccessibleName("Reload Timeline");
  setFocusPolicy(Qt::TabFocus);
  ShowTipByKeyboard(this);
}

void ReloadImage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ink = palette().color(QPalette::WindowText);
  if (underMouse() || hasFocus()) {
    QColor ground = palette().color(QPalette::Highlight);
    ground.setAlpha(isDown() ? 120 : 60);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), 3, 3);
  }
  const QPointF middle = QRectF(rect()).center();
  const double radius = 5;
  const QRectF circle(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(circle, 60 * 16, -300 * 16);  // from one o'clock round to eleven
  const QPointF tip = middle + QPointF(0, -radius);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  painter.drawPolygon(QPolygonF({tip + QPointF(0.5, -0.5), tip + QPointF(-4, -3), tip + QPointF(-4, 3)}));
}

void ReloadImage::enterEvent(QEnterEvent*) { update(); }

void ReloadImage::leaveEvent(QEvent*) { update(); }

ZoomInterval::ZoomInterval(QWidget* parent) : QWidget(parent) {
  setObjectName("shpZoomInterval");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void ZoomInterval::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor edge = palette().color(QPalette::Highlight);
  QColor ground = edge;
  ground.setAlpha(70);
  painter.fillRect(rect(), ground);
  painter.setPen(edge);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace pallomir
