#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>

#include "commands/command_table.h"
#include "commands/key_of_event_widget.h"
#include "timeline/picker_row_widget.h"
#include "window/boxes_widget.h"
#include "window/caption_line_widget.h"
#include "window/formMain.h"
#include "window/map_overlays_widget.h"

// What the system and the keyboard do with the main window.

namespace pallomir {

void formMain::resizeEvent(QResizeEvent*) {
  if (rooms_) rooms_->frame.Resized();
}

void formMain::moveEvent(QMoveEvent*) {
  if (rooms_) rooms_->frame.Moved();
}

void formMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && rooms_ && system_.HasWindowManager()) {
    const WindowMode mode = TopLevel::ModeOf(windowState());
    const bool wasMinimised =
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMinimized);
    if (wasMinimised && mode != WindowMode::kMinimised) rooms_->frame.MinimiseEnded();
    rooms_->frame.StateGiven(mode);
  }
  if (event->type() == QEvent::ActivationChange && rooms_) {
    if (isActiveWindow()) {
      rooms_->frame.MinimiseEnded();
    } else {
      rooms_->marks.HidePointInfos();
    }
  }
  QWidget::changeEvent(event);
}

void formMain::closeEvent(QCloseEvent* event) {
  event->accept();
  if (rooms_) rooms_->closed();
}

// The window sees keys before its controls, the map page among them.
bool formMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && watched == windowHandle()) {
    system_.Exposed();
    if (windowHandle()->isExposed()) rooms_->frame.MinimiseEnded();
  }
  const bool isOfInterest = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress ||
                            event->type() == QEvent::FocusOut || event->type() == QEvent::Leave;
  if (!isOfInterest || !watched->isWidgetType()) return QWidget::eventFilter(watched, event);
  auto& widget = *static_cast<QWidget*>(watched);
  if (event->type() == QEvent::KeyPress && FilterKey(widget, *static_cast<QKeyEvent*>(event))) return true;
  if (event->type() == QEvent::MouseButtonPress && widget.window() == this) FilterMousePress(widget);
  if (event->type() == QEvent::Leave && watched == mapArea_) rooms_->marks.HidePointInfos();
  if (event->type() == QEvent::FocusOut && watched == FocusGetter_) {
    QTimer::singleShot(0, this, Told([](auto& rooms) { rooms.focus.Return(); }));
  }
  return QWidget::eventFilter(watched, event);
}

bool formMain::FilterKey(QWidget& widget, const QKeyEvent& event) {
  if (!isActiveWindow() || widget.window() != this) return false;
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      rooms_->focus.HoldOff(true);
      return false;
    case Qt::Key_F6:
      if (auto* table = findChild<QWidget*>("formDataPoints"); table && table->isVisible()) {
        table->activateWindow();
        return true;
      }
      rooms_->focus.HoldOff(true);
      if (!pickers_->FocusStart())
        captionLine_->findChild<QWidget*>("lblMenu")->setFocus(Qt::ShortcutFocusReason);
      return true;
    case Qt::Key_F10:
      if (event.modifiers() != Qt::NoModifier) return false;
      rooms_->menuButton();
      return true;
    case Qt::Key_Escape:
      return FilterEscape(widget);
    default:
      break;
  }
  if (pickers_->HasPickerFocus()) return false;
  const auto key = KeyOfEvent(event);
  if (!key || !rooms_->keyDown(key->modifiers, key->key)) return false;
  LeaveChrome();
  return true;
}

// It does one thing at a time: what a control and those around it leave of it is offered to each of them.
bool formMain::FilterEscape(const QWidget& widget) {
  const bool closesHelp = overlays_->Help().IsShown();
  if (!closesHelp && &widget == focusWidget() && rooms_->keyDown(kNoModifier, special_key::kEscape))
    return true;
  overlays_->Help().Hide();
  boxes_->HideSplash();
  LeaveChrome();
  return closesHelp;
}

// A click outside the caption line ends the editing of a date and gives the keyboard back.
void formMain::FilterMousePress(QWidget& widget) {
  if (!isActiveWindow() && !system_.HasWindowManager()) activateWindow();
  if (&widget != captionLine_ && !captionLine_->isAncestorOf(&widget)) LeaveChrome();
}

void formMain::LeaveChrome() {
  rooms_->focus.HoldOff(false);
  FocusGetter_->setFocus(Qt::OtherFocusReason);
}

void formMain::ReturnFocus() {
  if (!isActiveWindow() || QApplication::activePopupWidget() || focusWidget() == FocusGetter_ ||
      pickers_->HasPickerFocus()) {
    return;
  }
  FocusGetter_->setFocus(Qt::OtherFocusReason);
}

}  // namespace pallomir
