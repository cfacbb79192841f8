#pragma once

#include <QWidget>

#include "reports/point_table_view.h"

class QLabel;
class QMenu;
class QTableView;
class QToolButton;

namespace pallomir {

class PointRows;

/// The window of a data point table. It opens without the keyboard, so that the main window's keys go on
/// working; F6 leads to it and back.
class formDataPoints : public QWidget {
 public:
  /// A tool window over `owner`, whose child it is. It ends when it closes.
  formDataPoints(QWidget* owner, const PointTable& table, PointTableView::Actions actions);

  void ShowAddress(const std::string& address);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void BuildTable();
  void BuildFoot();
  void SetSizes();
  void MarkRow(const QModelIndex& at);
  void Choose();
  void Copy();
  void PopUpMenu(const QPoint& at);

  PointTableView::Actions actions_;
  PointRows* rows_;
  QTableView* table_;
  QLabel* lblEmpty_;
  QLabel* lblReverseGeoCode_;
  QToolButton* cmdMenu_;
  QMenu* menu_;
};

}  // namespace pallomir
