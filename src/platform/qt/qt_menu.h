#pragma once

#include <QMenu>
#include <QPoint>
#include <QPointer>
#include <string>

#include "platform/menu_model.h"

class QWidget;

namespace pallomir {

/// One menu of the model on the screen. It is filled from the model whenever it is opened, so the model may
/// change at any time; a submenu with a `fill` of its own is filled when that opens. A chosen entry is looked
/// up again before it is reported; one that is gone meanwhile, or can't be chosen any more, is not.
class QtMenu {
 public:
  /// `root` is the entry whose children are shown; the model outlives this object.
  QtMenu(MenuModel& model, Command root, QWidget* parent = nullptr);
  ~QtMenu();
  QtMenu(const QtMenu&) = delete;
  QtMenu& operator=(const QtMenu&) = delete;

  /// For a menu bar or a button. Belongs to this object.
  QMenu* Menu() { return menu_; }

  /// Opens the menu at a point of the screen and returns at once.
  void PopUp(const QPoint& at);

  /// Fills the menu as opening it does. Object names: the entry's name; for entries of an array the name and
  /// the index in parentheses, "mnuPopupZone(3)".
  void Render();

 private:
  struct Key {
    Command command{};
    std::string name;
    int index = 0;
  };

  static Key KeyOf(const MenuItem& item);
  MenuItem* FindAgain(const Key& key);
  void RenderInto(QMenu& menu, const MenuItem& parent);
  void RenderSubmenu(QMenu& submenu, const MenuItem& item);
  void Choose(const Key& key);
  void OnHidden();

  MenuModel& model_;
  Command root_;
  QPointer<QMenu> menu_;
};

}  // namespace pallomir
