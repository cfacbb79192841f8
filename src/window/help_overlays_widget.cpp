#include "window/help_overlays_widget.h"

#include <QRect>

#include "commands/key_list_widget.h"
#include "commands/keyboard_widget.h"

namespace pallomir {

HelpOverlays::HelpOverlays(QWidget* mapArea)
    : mapArea_(mapArea),
      pctKeyboard_(new KeyboardPicture(mapArea->parentWidget())),
      pctKeyList_(new KeyListPicture(mapArea->parentWidget())) {}

void HelpOverlays::ShowKeyboard() {
  approach_.Begin();
  pctKeyboard_->ShowOverlay(mapArea_->pos());
}

void HelpOverlays::ShowKeyList() {
  approach_.Begin();
  pctKeyList_->ShowOverlay(mapArea_->pos());
}

void HelpOverlays::ReadKeyboard() { pctKeyboard_->FocusKey(); }

QWidget* HelpOverlays::Keyboard() const { return pctKeyboard_; }

void HelpOverlays::Hide() {
  pctKeyboard_->HideOverlay();
  pctKeyList_->HideOverlay();
}

bool HelpOverlays::IsShown() const { return pctKeyboard_->isVisible() || pctKeyList_->isVisible(); }

void HelpOverlays::Raise() {
  pctKeyboard_->raise();
  pctKeyList_->raise();
}

void HelpOverlays::PointerOverMap(const QPoint& at) {
  QRect shown;
  for (const QWidget* help : {static_cast<QWidget*>(pctKeyboard_), static_cast<QWidget*>(pctKeyList_)})
    if (help->isVisible()) shown |= help->geometry();
  shown.translate(-mapArea_->pos());
  if (!approach_.IsOnTheWay(at.x(), at.y(), {shown.x(), shown.y(), shown.width(), shown.height()})) Hide();
}

}  // namespace pallomir
