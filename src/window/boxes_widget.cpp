#include "window/boxes_widget.h"

#include <QCoreApplication>

#include "window/about_widget.h"
#include "window/formMapUpdating.h"
#include "window/formSplash.h"

namespace pallomir {

WindowBoxes::WindowBoxes(QWidget* window)
    : formSplash_(new formSplash(window, VersionText(PALLOMIR_VERSION, ExecutableDate()))),
      formMapUpdating_(new formMapUpdating(window)),
      about_(new AboutBox(window, "Pallomir", PALLOMIR_VERSION, ExecutableDate())) {}

void WindowBoxes::ShowAbout() { about_->ShowBox(); }
void WindowBoxes::ShowSplash() { formSplash_->ShowInPlace(); }
void WindowBoxes::TickStatus(int line) { formSplash_->Tick(line); }
void WindowBoxes::HideSplash() { formSplash_->hide(); }
void WindowBoxes::ShowMapUpdating() { formMapUpdating_->ShowInPlace(); }
void WindowBoxes::HideMapUpdating() { formMapUpdating_->hide(); }

void WindowBoxes::CloseWindows() {
  closeOthers();
  about_->hide();
  formSplash_->hide();
  formMapUpdating_->hide();
}

void WindowBoxes::EndApplication(int exitCode) { QCoreApplication::exit(exitCode); }

}  // namespace pallomir
