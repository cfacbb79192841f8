#include "zones/formZoneList.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "zones/zone_items_widget.h"

namespace pallomir {
namespace {

// No more is unfolded for the user; the view takes time and height for each line.
constexpr ZoneOrdinal kMostUnfolded = 2000;
constexpr int kDeepestUnfolded = 20;

}  // namespace

formZoneList::formZoneList(QWidget* owner, const ZoneListModel& zones, ZonesView::ListActions actions)
    : QDialog(owner),
      zones_(zones),
      actions_(std::move(actions)),
      tree_(new QTreeView(this)),
      items_(new ZoneItems(zones, this)) {
  setObjectName("formZoneList");
  setWindowTitle("Zone List");
  setAttribute(Qt::WA_DeleteOnClose);
  setSizeGripEnabled(true);
  BuildTree();
  auto* buttons = new QHBoxLayout;
  cmdZoom_ = AddButton("&Zoom To", "cmdZoom", &formZoneList::Zoom);
  cmdRename_ = AddButton("&Rename", "cmdRename", &formZoneList::Rename);
  cmdDelete_ = AddButton("&Delete", "cmdDelete", &formZoneList::Delete);
  cmdZoom_->setToolTip("Enter");
  cmdRename_->setToolTip("F2");
  cmdDelete_->setToolTip("Delete");
  for (QPushButton* button : {cmdZoom_, cmdRename_, cmdDelete_}) buttons->addWidget(button);
  buttons->addStretch();
  auto* close = AddButton("&Close", "cmdClose", nullptr);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  buttons->addWidget(close);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(tree_);
  rows->addLayout(buttons);
  resize(640, 360);
  Refresh();
  tree_->setFocus();
}

void formZoneList::BuildTree() {
  tree_->setObjectName("zoneTree");
  tree_->setAccessibleName("Zones");
  tree_->setModel(items_);
  tree_->setUniformRowHeights(true);
  tree_->setAllColumnsShowFocus(true);
  tree_->setEditTriggers(QAbstractItemView::EditKeyPressed);
  tree_->header()->setStretchLastSection(false);
  tree_->header()->setSectionResizeMode(ZoneListModel::kZone, QHeaderView::Stretch);
  for (const auto& [column, like] : {std::pair(ZoneListModel::kKind, "Non-Alert "),
                                     {ZoneListModel::kDays, "Sun, Tue-Thu, Sat "},
                                     {ZoneListModel::kVertices, "Corners  "},
                                     {ZoneListModel::kArea, "12,300,000 sq mi "}})
    tree_->setColumnWidth(column, fontMetrics().horizontalAdvance(like) + 16);
  items_->renamed = [this](ZoneOrdinal zone, const std::string& name) {
    // From the event loop: storing the name resets the model, whose editor is at work.
    QMetaObject::invokeMethod(
        this, [this, zone, name] { actions_.rename(zone, name); }, Qt::QueuedConnection);
  };
  connect(tree_, &QTreeView::activated, this, &formZoneList::Zoom);
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& now) {
            if (now.isValid()) current_ = ZoneItems::ZoneOf(now);
            ShowButtons();
          });
  const auto note = [this](const QModelIndex& index, bool isFolded) {
    if (isUnfolding_) return;
    const std::string section = zones_.Tree().Section(ZoneItems::ZoneOf(index));
    if (isFolded) {
      folded_.insert(section);
    } else {
      folded_.erase(section);
    }
  };
  connect(tree_, &QTreeView::collapsed, this, [note](const QModelIndex& index) { note(index, true); });
  connect(tree_, &QTreeView::expanded, this, [note](const QModelIndex& index) { note(index, false); });
  auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), tree_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, this, &formZoneList::Delete);
}

// None is pressed by Enter, which belongs to the tree.
QPushButton* formZoneList::AddButton(const QString& caption, const char* name, void (formZoneList::*act)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  if (act) connect(button, &QPushButton::clicked, this, act);
  return button;
}

void formZoneList::Refresh() {
  items_->Reset();
  Unfold();
  const ZoneOrdinal count = zones_.Tree().Count();
  if (count > 0) tree_->setCurrentIndex(items_->IndexOf(Shown(std::min(current_, count - 1))));
  ShowButtons();
}

// The zone, or what it is folded into.
ZoneOrdinal formZoneList::Shown(ZoneOrdinal zone) const {
  ZoneOrdinal shown = zone;
  for (ZoneOrdinal at = zones_.Tree().At(zone).parent; at != ZoneTree::kNone;
       at = zones_.Tree().At(at).parent)
    if (!tree_->isExpanded(items_->IndexOf(at))) shown = at;
  return shown;
}

void formZoneList::Unfold() {
  isUnfolding_ = true;
  const ZoneTree& tree = zones_.Tree();
  for (ZoneOrdinal zone = 0; zone < std::min(tree.Count(), kMostUnfolded); ++zone) {
    if (tree.At(zone).depth > kDeepestUnfolded || tree.At(zone).subtreeEnd == zone + 1) continue;
    if (folded_.empty() || !folded_.contains(tree.Section(zone))) tree_->expand(items_->IndexOf(zone));
  }
  isUnfolding_ = false;
}

void formZoneList::ShowButtons() {
  const QModelIndex current = tree_->currentIndex();
  const bool mayChange = current.isValid() && zones_.mayChange();
  cmdZoom_->setEnabled(current.isValid() && zones_.Tree().At(ZoneItems::ZoneOf(current)).vertexCount > 0);
  cmdRename_->setEnabled(mayChange);
  cmdDelete_->setEnabled(mayChange);
}

void formZoneList::Zoom() {
  if (cmdZoom_->isEnabled()) actions_.zoom(current_);
}

void formZoneList::Rename() {
  tree_->setFocus();
  if (cmdRename_->isEnabled()) tree_->edit(items_->IndexOf(current_));
}

void formZoneList::Delete() {
  if (cmdDelete_->isEnabled()) actions_.remove(current_);
}

}  // namespace pallomir
