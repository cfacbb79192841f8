#include "window/size_grips_widget.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <optional>

namespace pallomir {
namespace {

constexpr int kGrip = 6;

// Corners come last, so that they lie over the ends of the edges.
constexpr Qt::Edges kGripEdges[] = {
    Qt::LeftEdge,
    Qt::TopEdge,
    Qt::RightEdge,
    Qt::BottomEdge,
    Qt::TopEdge | Qt::LeftEdge,
    Qt::TopEdge | Qt::RightEdge,
    Qt::BottomEdge | Qt::LeftEdge,
    Qt::BottomEdge | Qt::RightEdge,
};

bool IsCorner(Qt::Edges edges) {
  return (edges & (Qt::LeftEdge | Qt::RightEdge)) && (edges & (Qt::TopEdge | Qt::BottomEdge));
}

Qt::CursorShape ShapeFor(Qt::Edges edges) {
  if (!IsCorner(edges)) return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
  const bool falling = edges.testFlag(Qt::LeftEdge) == edges.testFlag(Qt::TopEdge);
  return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

/// One edge or corner. It paints nothing.
class Grip : public QWidget {
 public:
  Grip(QWidget* window, Qt::Edges edges) : QWidget(window), edges_(edges) { setCursor(ShapeFor(edges)); }

  QRect Place(const QSize& window) const {
    QRect place(QPoint(0, 0), window);
    const int side = IsCorner(edges_) ? 2 * kGrip : kGrip;
    if (edges_ & Qt::LeftEdge) place.setWidth(side);
    if (edges_ & Qt::RightEdge) place.setLeft(window.width() - side);
    if (edges_ & Qt::TopEdge) place.setHeight(side);
    if (edges_ & Qt::BottomEdge) place.setTop(window.height() - side);
    return place;
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) drag_ = Drag{event->globalPosition().toPoint(), {}};
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    if (!drag_) return;
    if (!event->buttons().testFlag(Qt::LeftButton)) {
      drag_.reset();  // the system has kept the release to itself
      return;
    }
    if (drag_->bounds.isNull()) {
      QWindow* handle = window()->windowHandle();
      if (handle && handle->startSystemResize(edges_)) {
        drag_.reset();
        return;
      }
      drag_->bounds = window()->geometry();
    }
    const QPoint by = event->globalPosition().toPoint() - drag_->start;
    window()->setGeometry(DraggedBounds(drag_->bounds, edges_, by));
  }

  void mouseReleaseEvent(QMouseEvent*) override { drag_.reset(); }

 private:
  struct Drag {
    QPoint start;  // of the pointer, on the screen
    QRect bounds;  // of the window at the start; null until it is known that the resizing is left to us
  };

  Qt::Edges edges_;
  std::optional<Drag> drag_;
};

}  // namespace

QRect DraggedBounds(const QRect& start, Qt::Edges edges, QPoint by) {
  QRect bounds = start;
  const QPoint farthest(start.width() - kSmallestWindow.width(), start.height() - kSmallestWindow.height());
  if (edges & Qt::LeftEdge) bounds.setLeft(start.left() + std::min(by.x(), farthest.x()));
  if (edges & Qt::RightEdge) bounds.setRight(start.right() + std::max(by.x(), -farthest.x()));
  if (edges & Qt::TopEdge) bounds.setTop(start.top() + std::min(by.y(), farthest.y()));
  if (edges & Qt::BottomEdge) bounds.setBottom(start.bottom() + std::max(by.y(), -farthest.y()));
  return bounds;
}

SizeGrips::SizeGrips(QWidget* window) : QObject(window), window_(window) {
  setObjectName("pctSizer");
  for (std::size_t i = 0; i < grips_.size(); ++i) {
    grips_[i] = new Grip(window, kGripEdges[i]);
    grips_[i]->setObjectName(QString("pctSizer(%1)").arg(i));
  }
  window->installEventFilter(this);
  LayOut();
}

void SizeGrips::SetEnabled(bool enabled) {
  for (QWidget* grip : grips_) grip->setVisible(enabled);
}

void SizeGrips::Raise() {
  for (QWidget* grip : grips_) grip->raise();
}

bool SizeGrips::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) LayOut();
  return QObject::eventFilter(watched, event);
}

void SizeGrips::LayOut() {
  for (QWidget* grip : grips_) grip->setGeometry(static_cast<Grip*>(grip)->Place(window_->size()));
}

}  // namespace pallomir
