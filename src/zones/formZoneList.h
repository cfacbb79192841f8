#pragma once

#include <QDialog>
#include <set>
#include <string>

#include "zones/zone_list_model.h"
#include "zones/zones_view.h"

class QPushButton;
class QTreeView;

namespace pallomir {

class ZoneItems;

/// The window "Zone List": the tree of zones, each with its kind, days, corners and area. Enter zooms to the
/// current one, F2 renames it, Delete deletes it; a button says so of each.
class formZoneList : public QDialog {
 public:
  /// `zones` outlives the window, which stays over its owner and is modal to nothing.
  formZoneList(QWidget* owner, const ZoneListModel& zones, ZonesView::ListActions actions);

  /// The list is another one now. The current line and what is folded stay as far as they can.
  void Refresh();

 private:
  void BuildTree();
  QPushButton* AddButton(const QString& caption, const char* name, void (formZoneList::*act)());
  void Zoom();
  void Rename();
  void Delete();
  void ShowButtons();
  void Unfold();
  ZoneOrdinal Shown(ZoneOrdinal zone) const;

  const ZoneListModel& zones_;
  ZonesView::ListActions actions_;
  QTreeView* tree_;
  ZoneItems* items_;
  std::set<std::string> folded_;  // the dotted numbers of zones that the user has folded
  ZoneOrdinal current_ = 0;
  bool isUnfolding_ = false;
  QPushButton* cmdZoom_ = nullptr;
  QPushButton* cmdRename_ = nullptr;
  QPushButton* cmdDelete_ = nullptr;
};

}  // namespace pallomir
