#include "window/capture_panel_widget.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>

namespace pallomir {

CapturePanel::CapturePanel(QWidget* mapArea) : QWidget(mapArea) {
  setObjectName("picP");
  setFocusPolicy(Qt::NoFocus);
  setCursor(Qt::CrossCursor);
  hide();
}

void CapturePanel::Poll() {
  const QWidget* map = parentWidget();
  // The release may have gone elsewhere.
  if (anchor_ && (!map->isActiveWindow() || !(QGuiApplication::mouseButtons() & Qt::LeftButton)))
    anchor_.reset();
  const bool shift = QGuiApplication::queryKeyboardModifiers() == Qt::ShiftModifier;
  const bool overMap = map->rect().contains(map->mapFromGlobal(QCursor::pos()));
  const bool wanted = anchor_ || (shift && overMap && map->isActiveWindow());
  if (wanted && isHidden()) {
    setGeometry(map->rect());
    show();
    raise();
  } else if (!wanted && !isHidden()) {
    hide();
  }
}

void CapturePanel::paintEvent(QPaintEvent*) {
  if (!anchor_) return;
  QPainter painter(this);
  painter.setPen(QPen(Qt::white, 3));
  const QRect band = QRect(*anchor_, corner_).normalized();
  painter.drawRect(band);
  painter.setPen(QPen(Qt::black, 1));
  painter.drawRect(band);
}

void CapturePanel::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  anchor_ = corner_ = event->position().toPoint();
}

void CapturePanel::mouseMoveEvent(QMouseEvent* event) {
  corner_ = event->position().toPoint();
  if (anchor_) update();
}

void CapturePanel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !anchor_) return;
  const QPoint from = *anchor_;
  anchor_.reset();
  update();
  if (drawn) drawn(from, event->position().toPoint());
}

void CapturePanel::hideEvent(QHideEvent*) { anchor_.reset(); }

}  // namespace pallomir
