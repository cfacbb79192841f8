#include <QApplication>
#include <QCursor>

#include "platform/qt/qt_menu.h"
#include "timeline/picker_row_widget.h"
#include "tracking/FormRetryAfterError.h"
#include "window/caption_line_widget.h"
#include "window/formMain.h"

// What the rooms show in the main window.

namespace pallomir {
namespace {

QString Text(const std::string& utf8) { return QString::fromStdString(utf8); }

}  // namespace

void formMain::ShowLamp(const LampMessage& lamp) {
  constexpr LampState kStates[] = {LampState::kQuiet, LampState::kGreen, LampState::kAmber, LampState::kRed};
  captionLine_->SetLamp(kStates[static_cast<int>(lamp.colour)], Text(lamp.tip), Text(lamp.word));
}

void formMain::ShowDemoMode(bool on) { captionLine_->SetDemoMode(on); }

void formMain::SetCaption(const std::string& text) { captionLine_->SetCaption(Text(text)); }
void formMain::ShowCaption(bool visible) { captionLine_->SetCaptionVisible(visible); }

void formMain::SetMenuLabel(const std::string& text) { captionLine_->SetMenuText(Text(text)); }

void formMain::ShowRetry(const std::string& message) {
  FormRetryAfterError_->SetMessage(Text(message));
  // It takes the keyboard only from the main window, not from another program's or from a dialog of ours.
  FormRetryAfterError_->ShowOver(QApplication::activeWindow() == this);
}

void formMain::SetRetryProgress(int bar, const std::string& label) {
  FormRetryAfterError_->SetProgress(bar, Text(label));
}

void formMain::HideRetry() { FormRetryAfterError_->hide(); }

void formMain::ShowPicker(int i, Millis value, const std::string& format, bool visible) {
  pickers_->ShowPicker(i, value, Text(format), visible);
}

void formMain::ShowReloadButton(bool visible) { pickers_->ShowReload(visible); }
void formMain::MovePointerToReloadButton() { pickers_->MovePointerToReload(); }

void formMain::PopUpMenu(MenuPlace place) {
  if (!formMnu_) return;
  // In full screen the button may be hidden: its corner of the window is meant then too.
  const auto* button = captionLine_->findChild<QWidget*>("lblMenu");
  formMnu_->PopUp(place == MenuPlace::kAtPointer ? QCursor::pos()
                  : button->isVisible()          ? button->mapToGlobal(QPoint(0, button->height()))
                                                 : mapToGlobal(QPoint(0, 0)));
}

}  // namespace pallomir
