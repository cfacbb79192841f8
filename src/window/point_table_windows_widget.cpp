#include "window/point_table_windows_widget.h"

#include <QFileDialog>
#include <utility>

#include "reports/formDataPoints.h"
#include "ui/file_dialog_widget.h"
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
  fileDialog_ =
      ShowCsvDialog(&window_, "pointTableFileDialog", "Save Table as CSV", "DataPoints.csv", std::move(then));
}

}  // namespace pallomir
