#include "commands/menus.h"

#include <utility>

#include "commands/command_table.h"
#include "commands/hot_keys.h"

namespace pallomir {

void BuildMenus(MenuModel& menus) {
  for (const CommandRow& row : CommandTable()) {
    if (!*row.caption) continue;
    MenuItem item;
    item.command = row.command;
    item.name = row.name;
    item.index = row.index;
    item.caption = row.caption;
    item.tag = row.tag;
    item.checkable = row.isCheckable;
    item.checked = row.isChecked;
    item.visible = row.state != CommandRow::State::kLater && row.state != CommandRow::State::kHidden;
    item.enabled = row.state != CommandRow::State::kGrey;
    item.hotKey = MenuKeyText(row.command, row.index);
    MenuItem& parent = row.parent == Command::kNone ? menus.bar : menus.At(row.parent);
    parent.children.push_back(std::move(item));
  }
}

MenuItem UserEntry(const MenuModel& menus, Command of, int index, std::string caption) {
  MenuItem item;
  item.command = of;
  if (const MenuItem* first = menus.Find(of)) item.name = first->name;
  item.index = index;
  item.caption = std::move(caption);
  item.isPlainText = true;
  item.hotKey = MenuKeyText(of, index);
  return item;
}

void ChooseInMenu(MenuModel& menus, Command array, int index, const std::string& prefix) {
  menus.CheckOnly(array, index);
  if (MenuItem* parent = menus.ArrayParent(array)) parent->caption = prefix + menus.At(array, index).caption;
}

}  // namespace pallomir
