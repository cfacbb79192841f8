#include "platform/qt/accessible_menu_entry.h"

#include <QAccessibleObject>
#include <QAction>
#include <QMenu>

namespace pallomir {
namespace {

/// An entry of a menu that opens no other one.
class EntryInterface : public QAccessibleObject, public QAccessibleActionInterface {
 public:
  explicit EntryInterface(QAction* action) : QAccessibleObject(action) {}

  QAccessible::Role role() const override {
    return Action()->isCheckable() ? QAccessible::CheckBox : QAccessible::MenuItem;
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    const QAction* action = Action();
    const QMenu* menu = Menu();
    state.checkable = action->isCheckable();
    state.checked = action->isChecked();
    state.disabled = !action->isEnabled();
    state.focusable = action->isEnabled();
    state.focused = menu && menu->activeAction() == action;
    state.invisible = !menu || !menu->isVisible();
    return state;
  }

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Accelerator) return HotKey();
    if (kind != QAccessible::Name) return {};
    QString name = Action()->text().section('\t', 0, 0);
    // "&&" stands for itself, a single "&" marks the access key.
    for (qsizetype at = 0; (at = name.indexOf('&', at)) >= 0; ++at) name.remove(at, 1);
    return name;
  }

  QRect rect() const override {
    const QMenu* menu = Menu();
    if (!menu) return {};
    const QRect inside = menu->actionGeometry(Action());
    return {menu->mapToGlobal(inside.topLeft()), inside.size()};
  }

  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(Menu()); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    return {Action()->isCheckable() ? toggleAction() : pressAction()};
  }
  void doAction(const QString& name) override {
    if (actionNames().contains(name)) Action()->trigger();
  }
  QStringList keyBindingsForAction(const QString&) const override {
    return HotKey().isEmpty() ? QStringList() : QStringList(HotKey());
  }

 private:
  /// The menu shows it behind a tab.
  QString HotKey() const { return Action()->text().section('\t', 1); }
  QAction* Action() const { return static_cast<QAction*>(object()); }
  QMenu* Menu() const {
    for (QObject* shows : Action()->associatedObjects())
      if (auto* menu = qobject_cast<QMenu*>(shows)) return menu;
    return nullptr;
  }
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* action = qobject_cast<QAction*>(object);
  return action && !action->menu() && !action->isSeparator() ? new EntryInterface(action) : nullptr;
}

}  // namespace

void AnnounceMenuEntries() { QAccessible::installFactory(MakeInterface); }

}  // namespace pallomir
