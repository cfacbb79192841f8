#include "platform/menu_model.h"

#include <algorithm>
#include <cassert>

namespace pallomir {
namespace {

// Visits every entry below `parent`, depth first in menu order, until `visit(entry, its parent)` returns
// true.
template <class Item, class Visit>
bool Walk(Item& parent, const Visit& visit) {
  for (auto& item : parent.children) {
    if (visit(item, parent) || Walk(item, visit)) return true;
  }
  return false;
}

template <class Item, class Matches>
Item* FindBelow(Item& parent, const Matches& matches) {
  Item* found = nullptr;
  Walk(parent, [&](Item& item, Item&) {
    if (!matches(item)) return false;
    found = &item;
    return true;
  });
  return found;
}

template <class Item>
Item* FindCommand(Item& bar, Command command, int index) {
  return FindBelow(bar, [&](const MenuItem& item) { return item.command == command && item.index == index; });
}

template <class Item>
Item* FindArrayParent(Item& bar, Command array) {
  Item* found = nullptr;
  Walk(bar, [&](Item& item, Item& parent) {
    if (item.command == array) found = &parent;
    return found != nullptr;
  });
  return found;
}

}  // namespace

std::string Doubled(std::string_view text) {
  std::string doubled;
  for (const char c : text) doubled.append(c == '&' ? 2 : 1, c);
  return doubled;
}

MenuItem* MenuModel::Find(Command command, int index) { return FindCommand(bar, command, index); }

const MenuItem* MenuModel::Find(Command command, int index) const { return FindCommand(bar, command, index); }

MenuItem* MenuModel::Find(std::string_view name, int index) {
  return FindBelow(bar, [&](const MenuItem& item) { return item.name == name && item.index == index; });
}

MenuItem& MenuModel::At(Command command, int index) { return OrNowhere(Find(command, index)); }

MenuItem& MenuModel::At(std::string_view name, int index) { return OrNowhere(Find(name, index)); }

MenuItem& MenuModel::OrNowhere(MenuItem* item) {
  assert(item && "no such menu entry");
  if (item) return *item;
  nowhere_ = {};
  return nowhere_;
}

void MenuModel::ForEach(Command array, const std::function<void(const MenuItem&)>& visit) const {
  const MenuItem* parent = ArrayParent(array);
  if (!parent) return;
  for (const MenuItem& item : parent->children)
    if (item.command == array) visit(item);
}

int MenuModel::Count(Command array) const {
  int count = 0;
  ForEach(array, [&](const MenuItem&) { ++count; });
  return count;
}

void MenuModel::CheckOnly(Command array, int index) {
  MenuItem* parent = ArrayParent(array);
  if (!parent) return;
  for (MenuItem& item : parent->children)
    if (item.command == array) item.checked = item.index == index;
}

int MenuModel::CheckedIndex(Command array) const {
  int index = -1;
  ForEach(array, [&](const MenuItem& item) {
    if (index < 0 && item.checked) index = item.index;
  });
  return index;
}

MenuItem* MenuModel::ArrayParent(Command array) { return FindArrayParent(bar, array); }

const MenuItem* MenuModel::ArrayParent(Command array) const { return FindArrayParent(bar, array); }

void MenuModel::AppendToArray(Command array, std::list<MenuItem> items) {
  MenuItem* parent = ArrayParent(array);
  assert(parent && "no such menu array");
  if (!parent) return;
  const auto last = std::find_if(parent->children.rbegin(), parent->children.rend(),
                                 [&](const MenuItem& item) { return item.command == array; });
  parent->children.splice(last.base(), items);
}

void MenuModel::TruncateArray(Command array, int from) {
  MenuItem* parent = ArrayParent(array);
  if (parent)
    parent->children.remove_if(
        [&](const MenuItem& item) { return item.command == array && item.index >= from; });
}

}  // namespace pallomir
