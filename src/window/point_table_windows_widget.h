#pragma once

#include <QPointer>

#include "reports/point_table_view.h"

class QFileDialog;

namespace pallomir {

class formDataPoints;
class formMain;

/// What is seen of the data point tables: their window.
class PointTableWindows : public PointTableView {
 public:
  /// `window` outlives this object.
  explicit PointTableWindows(formMain& window) : window_(window) {}

  void ShowPointTable(const PointTable& table, Actions actions) override;
  void ShowAddress(const std::string& address) override;
  void ClosePointTable() override;
  void AskCsvFile(std::function<void(const std::filesystem::path&)> then) override;

 private:
  formMain& window_;
  QPointer<formDataPoints> formDataPoints_;
  QPointer<QFileDialog> fileDialog_;
};

}  // namespace pallomir
