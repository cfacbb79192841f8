#include "shell/help_overlays_widget.h"

#include <QRect>

#include "commands/key_list_widget.h"
#include "commands/keyboard_widget.h"

namespace pallomir {

HelpOverlays::HelpOverlays(QWidget* mapArea)
    : pctKeyboard_(new KeyboardPicture(mapArea)), pctKeyList_(new KeyListPicture(mapArea)) {}

void HelpOverlays::ShowKeyboard() {
  approach_.Begin();
  pctKeyboard_->ShowOverlay();
}

void HelpOverlays::ShowKeyList() {
  approach_.Begin();
  pctKeyList_->ShowOverlay();
}

void HelpOverlays::ReadKeyboard() { pctKeyboard_->FocusKey(); }

QWidget* HelpOverlays::Keyboard() const { return pctKeyboard_; }

void HelpOverlays::Hide() {
  pctKeyboard_->HideOverlay();
  pctKeyList_->HideOverlay();
}

void HelpOverlays::Raise() {
  pctKeyboard_->raise();
  pctKeyList_->raise();
}

void HelpOverlays::PointerOverMap(const QPoint& at) {
  QRect shown;
  for (const QWidget* help : {static_cast<QWidget*>(pctKeyboard_), static_cast<QWidget*>(pctKeyList_)})
    if (help->isVisible()) shown |= help->geometry();
  if (!approach_.IsOnTheWay(at.x(), at.y(), {shown.x(), shown.y(), shown.width(), shown.height()})) Hide();
}

}  // namespace pallomir
