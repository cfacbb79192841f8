#pragma once

#include <QAbstractItemModel>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "zones/zone_list_model.h"

namespace pallomir {

/// The list of zones for a view of Qt. An index's id is the zone's place in the list.
class ZoneItems : public QAbstractItemModel {
 public:
  /// `zones` outlives this object.
  ZoneItems(const ZoneListModel& zones, QObject* parent);

  /// A name was typed; the list changes when it is stored.
  std::function<void(ZoneOrdinal, const std::string&)> renamed;

  /// The list is another one now.
  void Reset();

  static ZoneOrdinal ZoneOf(const QModelIndex& index) { return static_cast<ZoneOrdinal>(index.internalId()); }
  /// Of the zone's name.
  QModelIndex IndexOf(ZoneOrdinal zone) const;

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  bool hasChildren(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  const std::vector<ZoneOrdinal>& ChildrenOf(const QModelIndex& parent) const;

  const ZoneListModel& zones_;
  mutable std::unordered_map<ZoneOrdinal, std::vector<ZoneOrdinal>>
      children_;  // of those that were asked for
};

}  // namespace pallomir
