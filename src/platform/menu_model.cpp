#include "platform/menu_model.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace pallomir {
namespace {

struct Place {
  MenuItem* parent = nullptr;
  std::list<MenuItem>::iterator item;
};

// Visits every entry below `parent`, depth first in menu order, until `visit` returns true.
template <class Visit>
bool Walk(MenuItem& parent, const Visit& visit) {
  for (auto item = parent.children.begin(); item != parent.children.end(); ++item) {
    if (visit(Place{&parent, item}) || Walk(*item, visit)) return true;
  }
  return false;
}

Place FindPlace(MenuItem& bar, std::string_view name, int index) {
  Place found;
  Walk(bar, [&](const Place& place) {
    if (place.item->name != name || place.item->index != index) return false;
    found = place;
    return true;
  });
  return found;
}

}  // namespace

MenuItem* MenuModel::Find(std::string_view name, int index) {
  const Place place = FindPlace(bar, name, index);
  return place.parent ? &*place.item : nullptr;
}

const MenuItem* MenuModel::Find(std::string_view name, int index) const {
  return const_cast<MenuModel*>(this)->Find(name, index);
}

MenuItem& MenuModel::At(std::string_view name, int index) {
  MenuItem* item = Find(name, index);
  assert(item && "no such menu entry");
  return *item;
}

MenuItem* MenuModel::ArrayParent(std::string_view name) {
  MenuItem* parent = nullptr;
  Walk(bar, [&](const Place& place) {
    if (place.item->name == name) parent = place.parent;
    return parent != nullptr;
  });
  return parent;
}

const MenuItem* MenuModel::ArrayParent(std::string_view name) const {
  return const_cast<MenuModel*>(this)->ArrayParent(name);
}

int MenuModel::Count(std::string_view name) const {
  int count = 0;
  Walk(const_cast<MenuItem&>(bar), [&](const Place& place) {
    count += place.item->name == name;
    return false;
  });
  return count;
}

void MenuModel::CheckOnly(std::string_view name, int index) {
  Walk(bar, [&](const Place& place) {
    if (place.item->name == name) place.item->checked = place.item->index == index;
    return false;
  });
}

int MenuModel::CheckedIndex(std::string_view name) const {
  int index = -1;
  Walk(const_cast<MenuItem&>(bar), [&](const Place& place) {
    if (place.item->name != name || !place.item->checked) return false;
    index = place.item->index;
    return true;
  });
  return index;
}

void MenuModel::AppendToArray(std::string_view name, std::list<MenuItem> items) {
  MenuItem* parent = ArrayParent(name);
  assert(parent && "no such menu array");
  const auto last = std::find_if(parent->children.rbegin(), parent->children.rend(),
                                 [&](const MenuItem& item) { return item.name == name; });
  parent->children.splice(last.base(), items);
}

void MenuModel::TruncateArray(std::string_view name, int from) {
  MenuItem* parent = ArrayParent(name);
  if (parent)
    parent->children.remove_if([&](const MenuItem& item) { return item.name == name && item.index >= from; });
}

MenuItem& InsertItem(MenuItem& parent, std::size_t position, MenuItem item) {
  auto place = parent.children.begin();
  std::advance(place, static_cast<std::ptrdiff_t>(std::min(position, parent.children.size())));
  return *parent.children.insert(place, std::move(item));
}

bool DeleteItem(MenuItem& parent, std::size_t position) {
  if (position >= parent.children.size()) return false;
  parent.children.erase(std::next(parent.children.begin(), static_cast<std::ptrdiff_t>(position)));
  return true;
}

}  // namespace pallomir
