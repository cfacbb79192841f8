#include "journal/journal_rows_widget.h"

#include <QFont>
#include <algorithm>

namespace pallomir {

void JournalRows::Reset() {
  beginResetModel();
  rows_ = static_cast<int>(std::min<std::size_t>(list_.Count(), kMostRows));
  endResetModel();
}

int JournalRows::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int JournalRows::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : JournalList::kColumns;
}

QVariant JournalRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::FontRole)) return {};
  const JournalEntry* entry = list_.At(static_cast<std::size_t>(index.row()));
  if (!entry) return {};
  if (role == Qt::DisplayRole)
    return QString::fromStdString(list_.Text(*entry, static_cast<JournalList::Column>(index.column())));
  QFont font;
  font.setBold(entry->isAlert && !entry->acknowledged);
  return font;
}

QVariant JournalRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return JournalList::Heading(static_cast<JournalList::Column>(section));
}

}  // namespace pallomir
