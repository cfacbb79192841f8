#include "window/overlay_frame_widget.h"

#include <QEvent>

namespace pallomir {

OverlayFrame::OverlayFrame(QWidget* owner, double shareAbove) : QFrame(owner), shareAbove_(shareAbove) {
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  owner->installEventFilter(this);
  hide();
}

void OverlayFrame::ShowInPlace() {
  adjustSize();
  MoveToPlace();
  show();
  raise();
}

bool OverlayFrame::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == parentWidget()) MoveToPlace();
  return QFrame::eventFilter(watched, event);
}

void OverlayFrame::MoveToPlace() {
  const QSize free = parentWidget()->size() - size();
  move(free.width() / 2, static_cast<int>(free.height() * shareAbove_));
}

}  // namespace pallomir
