#pragma once

#include <QAbstractTableModel>

#include "journal/journal_list.h"

namespace pallomir {

/// The journal for a table view. Of a longer one it shows the newest million entries: the view keeps
/// something for each row.
class JournalRows : public QAbstractTableModel {
 public:
  static constexpr int kMostRows = 1'000'000;

  JournalRows(JournalList& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

  /// The list has been refreshed.
  void Reset();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  JournalList& list_;
  int rows_ = 0;
};

}  // namespace pallomir
