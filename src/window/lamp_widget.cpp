#include "window/lamp_widget.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/accessible_widget.h"
#include "ui/keyboard_tip_widget.h"

namespace pallomir {
namespace {

constexpr int kSide = 18;
constexpr qreal kMargin = 3.5;

struct Look {
  QColor fill;
  QPainterPath shape;
};

// Shapes differ, for those who see no difference between the colours: ring, disc, triangle, square.
Look LookOf(LampState state, const QRectF& box) {
  QPainterPath shape;
  switch (state) {
    case LampState::kQuiet:
      shape.addEllipse(box.adjusted(1, 1, -1, -1));
      return {Qt::transparent, shape};
    case LampState::kGreen:
      shape.addEllipse(box);
      return {QColor(0x2e, 0xa0, 0x43), shape};
    case LampState::kAmber:
      shape.addPolygon(QPolygonF({{box.center().x(), box.top()}, box.bottomRight(), box.bottomLeft()}));
      shape.closeSubpath();
      return {QColor(0xf0, 0xa0, 0x00), shape};
    case LampState::kRed:
      shape.addRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
      return {QColor(0xd7, 0x26, 0x3d), shape};
  }
  return {};
}

}  // namespace

Lamp::Lamp(QWidget* parent) : QWidget(parent) {
  setObjectName("picLamp");
  SetAccessible(this, {.role = QAccessible::StaticText});
  setFocusPolicy(Qt::TabFocus);
  ShowTipByKeyboard(this);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Lamp::Show(LampState state, const QString& text) {
  state_ = state;
  setToolTip(text);
  // The name, because it is read at once and whenever it changes.
  setAccessibleName("State: " + text);
  update();
}

QSize Lamp::sizeHint() const { return {kSide, kSide}; }

void Lamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look look = LookOf(state_, QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin));
  painter.setPen(QPen(palette().color(QPalette::WindowText), state_ == LampState::kQuiet ? 1.5 : 1.0));
  painter.setBrush(look.fill);
  painter.drawPath(look.shape);
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
  painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

}  // namespace pallomir
