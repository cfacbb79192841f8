#include "zones/zone_path_widget.h"

#include <QCursor>

namespace pallomir {

ZonePathTip::ZonePathTip(QWidget* mainWindow) : QLabel(mainWindow) {
  setObjectName("zonePath");
  setTextFormat(Qt::PlainText);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setMargin(4);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void ZonePathTip::ShowText(const QString& text) {
  constexpr QPoint kOff(14, 18);  // clear of the pointer's own picture
  const QSize room = parentWidget()->size();
  setText(fontMetrics().elidedText(text, Qt::ElideLeft, room.width() - 4 * margin()));
  setAccessibleName(text);
  adjustSize();
  const QPoint pointer = parentWidget()->mapFromGlobal(QCursor::pos());
  QPoint at = pointer + kOff;
  at.setX(std::clamp(at.x(), 0, std::max(0, room.width() - width())));
  // Over the pointer where there is no room below: never under it.
  if (at.y() + height() > room.height()) at.setY(pointer.y() - kOff.y() - height());
  move(at);
  raise();
  show();
}

}  // namespace pallomir
