#include "platform/qt/qt_menu.h"

#include <QAction>
#include <QMenu>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/qt/accessible_menu_entry.h"

namespace pallomir {
namespace {

template <class Matches>
MenuItem* FindBelow(MenuItem& parent, const Matches& matches) {
  for (MenuItem& item : parent.children) {
    if (matches(item)) return &item;
    if (MenuItem* found = FindBelow(item, matches)) return found;
  }
  return nullptr;
}

/// The entries of a menu that bear one name.
struct Array {
  int count = 0;
  bool hasCheckMark = false;
};
using Arrays = std::unordered_map<std::string_view, Array>;

Arrays ArraysOf(const MenuItem& parent) {
  Arrays arrays;
  for (const MenuItem& item : parent.children) {
    Array& array = arrays[item.name];
    ++array.count;
    array.hasCheckMark |= item.checked;
  }
  return arrays;
}

QString ObjectNameOf(const MenuItem& item, const Array& array) {
  QString name = QString::fromStdString(item.name);
  if (item.index != 0 || array.count > 1) name += '(' + QString::number(item.index) + ')';
  return name;
}

// A menu shows what stands behind a tab at its right edge. As a shortcut of the action the key would be taken
// from the window.
QString TextOf(const MenuItem& item) {
  if (item.IsSeparator()) return {};
  QString text = QString::fromStdString(item.caption).replace('\t', ' ');
  if (item.isPlainText) text.replace('&', "&&");
  return item.hotKey.empty() ? text : text + '\t' + QString::fromStdString(item.hotKey);
}

/// The caption as it is spoken: "&" before the access key is left out.
QString NameOf(const MenuItem& item) {
  QString name = QString::fromStdString(item.caption);
  return item.isPlainText ? name : name.remove('&').trimmed();
}

void ApplyState(QAction& action, const MenuItem& item, const Array& array) {
  // The other entries of an array with a check mark keep the room for theirs.
  action.setCheckable(item.checkable || array.hasCheckMark);
  action.setChecked(item.checked);
  action.setEnabled(item.enabled);
}

// Leaves no submenu behind: the menu's actions do not own theirs.
void Empty(QMenu& menu) {
  const auto submenus = menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
  menu.clear();
  qDeleteAll(submenus);
}

}  // namespace

QtMenu::QtMenu(MenuModel& model, Command root, QWidget* parent)
    : model_(model), root_(root), menu_(new QMenu(parent)) {
  AnnounceMenuEntries();
  QObject::connect(menu_, &QMenu::aboutToShow, menu_, [this] { Render(); });
  QObject::connect(menu_, &QMenu::aboutToHide, menu_, [this] { OnHidden(); });
}

// The window that the menu belongs to may have taken it along.
QtMenu::~QtMenu() { delete menu_; }

void QtMenu::PopUp(const QPoint& at) {
  menu_->close();
  menu_->popup(at);
}

void QtMenu::Render() {
  Empty(*menu_);
  const MenuItem* root = model_.Find(root_);
  if (!root) return;
  menu_->setObjectName(QString::fromStdString(root->name));
  menu_->setAccessibleName(NameOf(*root));
  RenderInto(*menu_, *root);
}

void QtMenu::RenderInto(QMenu& menu, const MenuItem& parent) {
  const Arrays arrays = ArraysOf(parent);
  for (const MenuItem& item : parent.children) {
    // One that is left out is not announced either.
    if (!item.visible) continue;
    const Array& array = arrays.at(item.name);
    QAction* action = nullptr;
    if (item.IsSeparator()) {
      action = menu.addSeparator();
    } else if (item.IsMenu()) {
      auto* submenu = new QMenu(&menu);
      action = menu.addMenu(submenu);
      RenderSubmenu(*submenu, item);
      submenu->setObjectName(ObjectNameOf(item, array));
      submenu->setAccessibleName(NameOf(item));
    } else {
      action = menu.addAction(QString());
      // Queued: the menu is closed by then, and the model may be rebuilt.
      QObject::connect(
          action, &QAction::triggered, menu_, [this, key = KeyOf(item)] { Choose(key); },
          Qt::QueuedConnection);
    }
    action->setText(TextOf(item));
    action->setObjectName(ObjectNameOf(item, array));
    ApplyState(*action, item, array);
  }
}

void QtMenu::RenderSubmenu(QMenu& submenu, const MenuItem& item) {
  if (!item.fill) return RenderInto(submenu, item);
  QObject::connect(&submenu, &QMenu::aboutToShow, &submenu, [this, &submenu, key = KeyOf(item)] {
    Empty(submenu);
    MenuItem* now = FindAgain(key);
    if (!now || !now->fill) return;
    const auto fill = now->fill;  // a copy, because it may replace itself
    fill(*now);
    RenderInto(submenu, *now);
  });
}

QtMenu::Key QtMenu::KeyOf(const MenuItem& item) { return {item.command, item.name, item.index}; }

MenuItem* QtMenu::FindAgain(const Key& key) {
  return FindBelow(model_.bar, [&](const MenuItem& item) {
    return item.command == key.command && item.name == key.name && item.index == key.index;
  });
}

// The menu hides before its chosen entry is triggered, and that is reported from the event loop: two turns of
// the loop let the report come first.
void QtMenu::OnHidden() {
  const auto later = [this](auto work) { QMetaObject::invokeMethod(menu_, work, Qt::QueuedConnection); };
  later([this, later] {
    later([this] {
      const auto call = model_.closed;
      if (call && !menu_->isVisible()) call();
    });
  });
}

void QtMenu::Choose(const Key& key) {
  const MenuItem* found = FindAgain(key);
  if (!found || !found->enabled || !found->visible) return;
  // A copy, because the listener may rebuild the menu that the entry is in.
  const MenuItem chosen = *found;
  const auto call = model_.chosen;
  if (call) call(chosen);
}

}  // namespace pallomir
