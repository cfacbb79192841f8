#include "window/visit_windows_widget.h"

#include <QFileDialog>
#include <utility>

#include "reports/formBeenHere.h"
#include "ui/file_dialog_widget.h"
#include "window/formMain.h"

namespace pallomir {

void VisitWindows::ShowBeenHere(BeenHere& search, Actions actions) {
  if (formBeenHere_) {
    formBeenHere_->ShowTarget();
  } else {
    formBeenHere_ = new formBeenHere(&window_, search, std::move(actions));
    formBeenHere_->show();
  }
  formBeenHere_->raise();
  formBeenHere_->activateWindow();
}

void VisitWindows::RefreshBeenHere() {
  if (formBeenHere_) formBeenHere_->Refresh();
}

void VisitWindows::AskVisitsFile(std::function<void(const std::filesystem::path&)> then) {
  if (!formBeenHere_) return;
  delete fileDialog_;
  fileDialog_ =
      ShowCsvDialog(formBeenHere_, "visitsFileDialog", "Save Visits as CSV", "Visits.csv", std::move(then));
}

void VisitWindows::CloseBeenHere() {
  delete fileDialog_;
  delete formBeenHere_;
}

}  // namespace pallomir
