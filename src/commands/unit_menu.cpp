#include "commands/unit_menu.h"

#include <list>
#include <utility>

#include "commands/menus.h"

namespace pallomir {

void ShowUnitsInMenu(MenuModel& menus, const std::vector<MobileUnit>& units) {
  menus.TruncateArray(Command::kOnlyUnit, 1);
  menus.At(Command::kOnlyUnit).visible = units.empty();
  std::list<MenuItem> items;
  for (const MobileUnit& unit : units) {
    const int i = static_cast<int>(items.size()) + 1;
    MenuItem& item =
        items.emplace_back(UserEntry(menus, Command::kOnlyUnit, i, unit.id + " - " + unit.description));
    item.tag = EncodeMobileUnit(unit);
    item.checkable = true;
    item.checked = unit.enabled;
  }
  menus.AppendToArray(Command::kOnlyUnit, std::move(items));
}

std::vector<MobileUnit> UnitsFromMenu(const MenuModel& menus) {
  std::vector<MobileUnit> units;
  menus.ForEach(Command::kOnlyUnit, [&](const MenuItem& item) {
    if (item.index == 0) return;
    units.push_back(ParseMobileUnit(item.tag));
    units.back().enabled = item.checked;
  });
  return units;
}

void ShowUnitsToFit(MenuModel& menus) {
  menus.TruncateArray(Command::kFitUnit, 1);
  std::list<MenuItem> items;
  menus.ForEach(Command::kOnlyUnit, [&](const MenuItem& unit) {
    if (unit.index == 0 || !unit.checked) return;
    const int k = static_cast<int>(items.size()) + 1;
    items.push_back(UserEntry(menus, Command::kFitUnit, k, unit.caption));
  });
  menus.At(Command::kFitUnit).visible = items.empty();
  menus.AppendToArray(Command::kFitUnit, std::move(items));
}

}  // namespace pallomir
