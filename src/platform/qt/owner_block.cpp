#include "platform/qt/owner_block.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QWindow>

namespace pallomir {
namespace {

// What begins something. The end of a drag that has begun before reaches its widget.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::DragEnter:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
      return true;
    default:
      return false;
  }
}

}  // namespace

OwnerBlock::OwnerBlock(QDialog& dialog) : QObject(&dialog), dialog_(dialog) {
  dialog.installEventFilter(this);
}

bool OwnerBlock::IsBelow(const QWidget& window) const {
  for (const QWidget* owner = dialog_.parentWidget(); owner; owner = owner->window()->parentWidget())
    if (owner->window() == &window) return true;
  return false;
}

bool OwnerBlock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &dialog_) {
    if (event->type() == QEvent::Show) qApp->installEventFilter(this);
    if (event->type() == QEvent::Hide) qApp->removeEventFilter(this);
    return false;
  }
  const bool isActivation = event->type() == QEvent::WindowActivate;
  if (!watched->isWidgetType() || !(isActivation || IsInput(event->type()))) return false;
  auto* widget = static_cast<QWidget*>(watched);
  if (!IsBelow(*widget->window())) return false;
  // A window manager refuses an activation that asks with the time of older input than its own: then the next
  // click or key brings the keyboard.
  const bool isAimed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
  if (isActivation ? widget->isWindow() : isAimed && !dialog_.isActiveWindow()) dialog_.activateWindow();
  return !isActivation;
}

void AskForKeyboard(QWidget& window, bool ask) {
  window.setAttribute(Qt::WA_ShowWithoutActivating, !ask);
  // The attribute is looked at only when the window is made, which it is once.
  window.winId();
  window.windowHandle()->setProperty("_q_showWithoutActivating", !ask);
}

}  // namespace pallomir
