#include "reports/point_pictures_widget.h"

#include <QPolygonF>
#include <algorithm>

namespace pallomir {
namespace {

// A square in the middle of the room, with something left around it.
QRectF SquareIn(const QRectF& room) {
  const double size = std::min(room.width(), room.height()) - 2;
  return {room.center().x() - size / 2, room.center().y() - size / 2, size, size};
}

}  // namespace

void PaintHeading(QPainter& painter, const QRectF& room, int imgDir, const QColor& colour) {
  if (imgDir < 1 || imgDir > 16) return;
  static const QPolygonF kNorth(
      {{0, -1}, {0.62, -0.1}, {0.2, -0.1}, {0.2, 1}, {-0.2, 1}, {-0.2, -0.1}, {-0.62, -0.1}});
  const QRectF square = SquareIn(room);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(square.center());
  painter.scale(square.width() / 2, square.height() / 2);
  painter.rotate(22.5 * (imgDir - 1));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(kNorth);
  painter.restore();
}

void PaintStatus(QPainter& painter, const QRectF& room, int imgAPt, const QColor& ground) {
  const bool isReceived = imgAPt == 18 || imgAPt == 20;
  const bool isNotReceived = imgAPt == 19 || imgAPt == 20;
  const bool isDark = ground.lightness() < 128;
  const QRectF square = SquareIn(room);
  const double unit = square.width() / 16;
  const QPointF middle = square.center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  if (isReceived) {
    const QColor blue(isDark ? "#80b0ff" : "#0000ff");
    painter.setPen(QPen(blue, 1.5 * unit));
    painter.drawEllipse(middle, 7 * unit, 7 * unit);
    painter.setBrush(blue);
    painter.drawEllipse(middle, unit, unit);
    painter.setBrush(Qt::NoBrush);
  }
  if (isNotReceived) {
    painter.setPen(QPen(QColor(isDark ? "#ff8080" : "#d00000"), 1.5 * unit));
    painter.drawEllipse(middle, 4.5 * unit, 4.5 * unit);
    const double arm = 3.2 * unit;
    painter.drawLine(middle + QPointF(-arm, -arm), middle + QPointF(arm, arm));
  }
  painter.restore();
}

}  // namespace pallomir
