#include "zones/zone_items_widget.h"

namespace pallomir {

ZoneItems::ZoneItems(const ZoneListModel& zones, QObject* parent)
    : QAbstractItemModel(parent), zones_(zones) {}

void ZoneItems::Reset() {
  beginResetModel();
  children_.clear();
  endResetModel();
}

const std::vector<ZoneOrdinal>& ZoneItems::ChildrenOf(const QModelIndex& parent) const {
  const ZoneOrdinal zone = parent.isValid() ? ZoneOf(parent) : ZoneTree::kNone;
  const auto [found, isNew] = children_.try_emplace(zone);
  if (isNew) found->second = zones_.Tree().ChildrenOf(zone);
  return found->second;
}

QModelIndex ZoneItems::IndexOf(ZoneOrdinal zone) const {
  if (zone >= zones_.Tree().Count()) return {};
  return createIndex(static_cast<int>(zones_.Tree().At(zone).number) - 1, 0, zone);
}

QModelIndex ZoneItems::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  return createIndex(row, column, ChildrenOf(parent)[static_cast<std::size_t>(row)]);
}

QModelIndex ZoneItems::parent(const QModelIndex& index) const {
  return index.isValid() ? IndexOf(zones_.Tree().At(ZoneOf(index)).parent) : QModelIndex();
}

int ZoneItems::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(ChildrenOf(parent).size());
}

int ZoneItems::columnCount(const QModelIndex&) const { return ZoneListModel::kColumns; }

bool ZoneItems::hasChildren(const QModelIndex& parent) const {
  if (!parent.isValid()) return !zones_.Tree().IsEmpty();
  return parent.column() == 0 && zones_.Tree().At(ZoneOf(parent)).subtreeEnd > ZoneOf(parent) + 1;
}

QVariant ZoneItems::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto column = static_cast<ZoneListModel::Column>(index.column());
  if (role == Qt::DisplayRole) return QString::fromStdString(zones_.Text(ZoneOf(index), column));
  if (role == Qt::EditRole && column == ZoneListModel::kZone)
    return QString::fromStdString(zones_.Tree().At(ZoneOf(index)).options.Description);
  if (role == Qt::TextAlignmentRole && column >= ZoneListModel::kVertices)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant ZoneItems::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return ZoneListModel::Heading(static_cast<ZoneListModel::Column>(section));
}

Qt::ItemFlags ZoneItems::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
  return index.column() == ZoneListModel::kZone && zones_.mayChange() ? flags | Qt::ItemIsEditable : flags;
}

bool ZoneItems::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  if (renamed) renamed(ZoneOf(index), value.toString().toStdString());
  return true;
}

}  // namespace pallomir
