#include "window/top_level_widget.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/qt/window_manager.h"

namespace pallomir {
namespace {

PixelRect RectOf(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// Those that show; an open question last, as it has to be answered first.
QList<QDialog*> DialogsOver(const QWidget& window) {
  QList<QDialog*> dialogs = window.findChildren<QDialog*>();
  dialogs.removeIf([](const QDialog* dialog) { return !dialog->isVisible(); });
  std::stable_partition(dialogs.begin(), dialogs.end(),
                        [](const QDialog* dialog) { return dialog->objectName() != "questionBox"; });
  return dialogs;
}

}  // namespace

WindowMode TopLevel::ModeOf(Qt::WindowStates states) {
  if (states.testFlag(Qt::WindowMinimized)) return WindowMode::kMinimised;
  if (states.testFlag(Qt::WindowFullScreen)) return WindowMode::kFullScreen;
  return states.testFlag(Qt::WindowMaximized) ? WindowMode::kMaximised : WindowMode::kNormal;
}

std::int64_t TopLevel::Handle() const { return static_cast<std::int64_t>(widget_.winId()); }
PixelRect TopLevel::WorkArea() const { return RectOf(widget_.screen()->availableGeometry()); }
PixelRect TopLevel::Screen() const { return RectOf(widget_.screen()->geometry()); }
bool TopLevel::HasWindowManager() const { return WindowManagerRuns(); }

// Shown, the widget itself learns of a new size and a new place one after the other; hidden, only it knows.
PixelRect TopLevel::Bounds() const {
  return RectOf(widget_.isVisible() ? widget_.windowHandle()->geometry() : widget_.geometry());
}

bool TopLevel::IsMaximisedOneWay() const {
  return widget_.windowHandle() && pallomir::IsMaximisedOneWay(*widget_.windowHandle());
}

bool TopLevel::KnowsPosition() const { return !QGuiApplication::platformName().startsWith("wayland"); }

std::vector<PixelRect> TopLevel::Screens() const {
  std::vector<PixelRect> screens;
  for (const QScreen* each : QGuiApplication::screens()) screens.push_back(RectOf(each->geometry()));
  return screens;
}

void TopLevel::SetBounds(const PixelRect& bounds) {
  const QSize size = QSize(bounds.width, bounds.height).expandedTo(widget_.minimumSize());
  if (KnowsPosition()) {
    widget_.setGeometry(QRect(QPoint(bounds.left, bounds.top), size));
  } else {
    widget_.resize(size);
  }
}

void TopLevel::SetState(WindowMode state) {
  switch (state) {
    case WindowMode::kNormal:
      widget_.setWindowState(Qt::WindowNoState);
      break;
    case WindowMode::kMinimised:
      widget_.setWindowState(widget_.windowState() | Qt::WindowMinimized);
      break;
    case WindowMode::kMaximised:
      widget_.setWindowState(Qt::WindowMaximized);
      break;
    case WindowMode::kFullScreen:
      widget_.setWindowState(Qt::WindowFullScreen);
      break;
  }
}

// By the window's own handle: the widget's flag would hide the window for a moment.
void TopLevel::SetTopmost(bool topmost) {
  if (widget_.windowHandle()) widget_.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

void TopLevel::Show() {
  // A window manager takes a state only from a window that it knows: when it has been seen for the first
  // time.
  stateWhenSeen_ = widget_.windowState();
  widget_.setWindowState(Qt::WindowNoState);
  widget_.show();
}

void TopLevel::Exposed() {
  if (std::exchange(seen_, true)) return;
  if (stateWhenSeen_) widget_.setWindowState(stateWhenSeen_);
  // Without a window manager nobody else gives it the keyboard.
  if (!HasWindowManager()) QTimer::singleShot(0, &widget_, [this] { widget_.activateWindow(); });
}

void TopLevel::BringToForeground() {
  // Another program's window, or a dialog of ours, keeps the keyboard: raising alone does not take it.
  widget_.raise();
  for (QDialog* dialog : DialogsOver(widget_)) dialog->raise();
  if (!QApplication::activeWindow() && KeyboardIsFree()) widget_.activateWindow();
}

void TopLevel::Activate() {
  if (widget_.isMinimized()) widget_.setWindowState(widget_.windowState() & ~Qt::WindowMinimized);
  widget_.show();
  widget_.raise();
  widget_.activateWindow();
}

void TopLevel::Close() { widget_.close(); }

}  // namespace pallomir
