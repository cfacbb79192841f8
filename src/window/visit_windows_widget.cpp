#include "window/visit_windows_widget.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <utility>

#include "reports/formBeenHere.h"
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

// As the journal's: whether a file may be replaced is asked by who gets the answer.
void VisitWindows::AskVisitsFile(std::function<void(const std::filesystem::path&)> then) {
  if (!formBeenHere_) return;
  delete fileDialog_;
  fileDialog_ = new QFileDialog(formBeenHere_, "Save Visits as CSV",
                                QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  fileDialog_->setObjectName("visitsFileDialog");
  fileDialog_->setAttribute(Qt::WA_DeleteOnClose);
  fileDialog_->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                          QFileDialog::ReadOnly);
  fileDialog_->setFileMode(QFileDialog::AnyFile);
  fileDialog_->setAcceptMode(QFileDialog::AcceptSave);
  fileDialog_->setNameFilter("CSV (*.csv)");
  fileDialog_->setDefaultSuffix("csv");
  fileDialog_->selectFile("Visits.csv");
  QObject::connect(fileDialog_, &QFileDialog::fileSelected, &window_,
                   [window = &window_, then = std::move(then)](const QString& file) {
                     const std::filesystem::path path = QFile::encodeName(file).toStdString();
                     QMetaObject::invokeMethod(
                         window, [then, path] { then(path); }, Qt::QueuedConnection);
                   });
  fileDialog_->show();
}

void VisitWindows::CloseBeenHere() {
  delete fileDialog_;
  delete formBeenHere_;
}

}  // namespace pallomir
