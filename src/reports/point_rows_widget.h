#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "reports/point_table.h"

namespace pallomir {

/// A data point table for a table view: five columns of text, one with the arrow, one with the status. One
/// row is marked.
class PointRows : public QAbstractTableModel {
 public:
  enum Column { kIndex, kDistance, kUnit, kTime, kSpeed, kDirection, kStatus, kColumns };

  PointRows(PointTable table, QObject* parent) : QAbstractTableModel(parent), table_(std::move(table)) {}

  const PointTable& Table() const { return table_; }
  int MarkedRow() const { return marked_; }
  void MarkRow(int row);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  PointTable table_;
  int marked_ = -1;
};

/// Draws the cells: white ground, light grey in the marked row, and the like in a dark palette.
class PointRowPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace pallomir
