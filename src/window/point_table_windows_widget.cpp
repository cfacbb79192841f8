#include "window/point_table_windows_widget.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <utility>

#include "reports/formDataPoints.h"
#include "window/formMain.h"

namespace pallomir {

void PointTableWindows::ShowPointTable(const PointTable& table, Actions actions) {
  formDataPoints_ = new formDataPoints(&window_, table, std::move(actions));
  formDataPoints_->show();
}

void PointTableWindows::ShowAddress(const std::string& address) {
  if (formDataPoints_) formDataPoints_->ShowAddress(address);
}

// It may be in the midst of an event.
void PointTableWindows::ClosePointTable() {
  if (!formDataPoints_) return;
  formDataPoints_->hide();
  formDataPoints_->deleteLater();
  formDataPoints_.clear();
}

void PointTableWindows::AskCsvFile(std::function<void(const std::filesystem::path&)> then) {
  delete fileDialog_;
  fileDialog_ = new QFileDialog(&window_, "Save Table as CSV",
                                QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  fileDialog_->setObjectName("pointTableFileDialog");
  fileDialog_->setAttribute(Qt::WA_DeleteOnClose);
  fileDialog_->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                          QFileDialog::ReadOnly);
  fileDialog_->setFileMode(QFileDialog::AnyFile);
  fileDialog_->setAcceptMode(QFileDialog::AcceptSave);
  fileDialog_->setNameFilter("CSV (*.csv)");
  fileDialog_->setDefaultSuffix("csv");
  fileDialog_->selectFile("DataPoints.csv");
  QObject::connect(fileDialog_, &QFileDialog::fileSelected, &window_,
                   [window = &window_, then = std::move(then)](const QString& file) {
                     const std::filesystem::path path = QFile::encodeName(file).toStdString();
                     QMetaObject::invokeMethod(
                         window, [then, path] { then(path); }, Qt::QueuedConnection);
                   });
  fileDialog_->show();
}

}  // namespace pallomir
