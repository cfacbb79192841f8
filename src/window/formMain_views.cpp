#include <QApplication>
#include <QCursor>
#include <QFrame>

#include "platform/qt/qt_menu.h"
#include "timeline/picker_row_widget.h"
#include "timeline/timeline_info_widget.h"
#include "timeline/timeline_strip_widget.h"
#include "tracking/FormRetryAfterError.h"
#include "window/about_widget.h"
#include "window/caption_line_widget.h"
#include "window/capture_panel_widget.h"
#include "window/formMain.h"
#include "window/formMapUpdating.h"
#include "window/formSplash.h"
#include "window/help_overlays_widget.h"
#include "window/point_marker_widget.h"

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

bool formMain::IsTimelineVisible() const { return !frameTimeLine_->isHidden(); }
void formMain::ShowTimeline(bool visible) { frameTimeLine_->setVisible(visible); }
void formMain::SetMenuLabel(const std::string& text) { captionLine_->SetMenuText(Text(text)); }
void formMain::LayOutTimeline(std::size_t rows) { strip_->LayOutRows(static_cast<int>(rows)); }
int formMain::TimelineWidth() const { return strip_->ScaleWidth(); }
void formMain::ShowTimelinePicture(const TimelinePicture& picture) { strip_->Redraw(picture); }

void formMain::ShowTimelineInfo(const std::string& text) {
  strip_->TellHover(Text(text));
  frameTimelineInfo_->ShowText(Text(text), strip_->mapTo(this, strip_->PointerPosition()),
                               mapArea_->geometry());
}

void formMain::HideTimelineInfo() { frameTimelineInfo_->hide(); }

void formMain::ShowAbout() { about_->ShowBox(); }
void formMain::ShowSplash() { formSplash_->ShowInPlace(); }
void formMain::TickStatus(int line) { formSplash_->Tick(line); }
void formMain::HideSplash() { formSplash_->hide(); }
void formMain::ShowMapUpdating() { formMapUpdating_->ShowInPlace(); }
void formMain::HideMapUpdating() { formMapUpdating_->hide(); }

void formMain::ShowRetry(const std::string& message) {
  FormRetryAfterError_->SetMessage(Text(message));
  // It takes the keyboard only from the main window, not from another program's or from a dialog of ours.
  FormRetryAfterError_->ShowOver(QApplication::activeWindow() == this);
}

void formMain::SetRetryProgress(int bar, const std::string& label) {
  FormRetryAfterError_->SetProgress(bar, Text(label));
}

void formMain::HideRetry() { FormRetryAfterError_->hide(); }

void formMain::ShowPointMarker(ViewPoint at) { marker_->ShowAt({at.x, at.y}); }
void formMain::ShowPointInfos(const std::vector<std::string>& texts) {
  QStringList lines;
  for (const std::string& text : texts) lines += Text(text);
  infos_->ShowTexts(lines);
  help_->Raise();  // what is being read stays on top
}
void formMain::HidePointInfos() { infos_->hide(); }
void formMain::HidePointMarker() { marker_->Hide(); }
void formMain::ShowCapturePanel() { picP_->Poll(); }

void formMain::PointerOverMap(ViewPoint at) { help_->PointerOverMap({at.x, at.y}); }

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

void formMain::CloseWindows() {
  FormRetryAfterError_->hide();
  for (QWidget* editor : editors_.Open()) editor->close();
  about_->hide();
  formSplash_->hide();
  formMapUpdating_->hide();
}

void formMain::EndApplication(int exitCode) { QCoreApplication::exit(exitCode); }

}  // namespace pallomir
