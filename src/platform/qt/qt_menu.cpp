#include "platform/qt/qt_menu.h"

#include <QAction>
#include <QMenu>
#include <algorithm>
#include <utility>

namespace pallomir {
namespace {

template <class Matches>
const MenuItem* FindBelow(const MenuItem& parent, const Matches& matches) {
  for (const MenuItem& item : parent.children) {
    if (matches(item)) return &item;
    if (const MenuItem* found = FindBelow(item, matches)) return found;
  }
  return nullptr;
}

bool IsSameArray(const MenuItem& one, const MenuItem& other) {
  return !one.name.empty() && one.name == other.name && one.name != "-";
}

QString ObjectNameOf(const MenuItem& item, const MenuItem& parent) {
  QString name = QString::fromStdString(item.name);
  const auto count = std::count_if(parent.children.begin(), parent.children.end(),
                                   [&](const MenuItem& sibling) { return IsSameArray(sibling, item); });
  if (item.index != 0 || count > 1) name += '(' + QString::number(item.index) + ')';
  return name;
}

void ApplyState(QAction& action, const MenuItem& item, const MenuItem& parent) {
  // The other entries of an array with a check mark keep the room for theirs.
  const bool isCheckable = item.checked || std::any_of(parent.children.begin(), parent.children.end(),
                                                       [&](const MenuItem& sibling) {
                                                         return sibling.checked && IsSameArray(sibling, item);
                                                       });
  action.setCheckable(isCheckable);
  action.setChecked(item.checked);
  action.setEnabled(item.enabled);
  action.setVisible(item.visible);
}

}  // namespace

QtMenu::QtMenu(MenuModel& model, std::string name, QWidget* parent)
    : model_(model), name_(std::move(name)), menu_(new QMenu(parent)) {
  menu_->setObjectName(QString::fromStdString(name_));
  QObject::connect(menu_, &QMenu::aboutToShow, menu_, [this] { Render(); });
}

// The window that the menu belongs to may have taken it along.
QtMenu::~QtMenu() { delete menu_; }

void QtMenu::PopUp(const QPoint& at) {
  menu_->close();
  menu_->popup(at);
}

void QtMenu::Render() {
  const auto submenus = menu_->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
  menu_->clear();
  qDeleteAll(submenus);
  if (const MenuItem* parent =
          FindBelow(model_.bar, [&](const MenuItem& item) { return item.name == name_; }))
    RenderInto(*menu_, *parent);
}

void QtMenu::RenderInto(QMenu& menu, const MenuItem& parent) {
  for (const MenuItem& item : parent.children) {
    QAction* action = nullptr;
    if (item.IsSeparator()) {
      action = menu.addSeparator();
    } else if (!item.children.empty()) {
      auto* submenu = new QMenu(&menu);
      action = menu.addMenu(submenu);
      RenderInto(*submenu, item);
      submenu->setObjectName(ObjectNameOf(item, parent));
    } else {
      action = menu.addAction(QString());
      Key key{item.name, item.index, item.identifier};
      // Queued: the menu is closed by then, and the model may be rebuilt.
      QObject::connect(
          action, &QAction::triggered, menu_, [this, key = std::move(key)] { Choose(key); },
          Qt::QueuedConnection);
    }
    action->setText(item.IsSeparator() ? QString() : QString::fromStdString(item.caption));
    action->setObjectName(ObjectNameOf(item, parent));
    ApplyState(*action, item, parent);
  }
}

void QtMenu::Choose(const Key& key) {
  const MenuItem* found = FindBelow(model_.bar, [&](const MenuItem& item) {
    return item.name == key.name && item.index == key.index && item.identifier == key.identifier;
  });
  if (!found || !found->enabled || !found->visible) return;
  // A copy, because the listener may rebuild the menu that the entry is in.
  const MenuItem chosen = *found;
  const auto call = model_.chosen;
  if (call) call(chosen);
}

}  // namespace pallomir
