#include "commands/unit_menu.h"

#include <list>
#include <utility>

#include "commands/menus.h"

namespace pallomir {
namespace {

std::string CaptionOf(const MobileUnit& unit) { return unit.id + " - " + unit.description; }

}  // namespace

void JoinUnits(MenuModel& menus, CommandHandlers& handlers, UnitRegister& units) {
  handlers.Set(Command::kAllUnits, [&units](int) { units.ShowAll(); });
  handlers.Set(Command::kOnlyUnit, [&units](int i) { units.ShowOnly(static_cast<std::size_t>(i)); });
  handlers.Set(Command::kToggleUnit, [&units](int i) { units.Toggle(static_cast<std::size_t>(i)); });
  handlers.Set(Command::kEditUnits, [&units](int) { units.Edit(); });
  units.listChanged = [&menus, &units] { ShowUnitsInMenu(menus, units.List()); };
  units.flagsChanged = [&menus, &units] { ShowUnitFlags(menus, units.List()); };
}

void ShowUnitsInMenu(MenuModel& menus, const std::vector<MobileUnit>& units) {
  menus.TruncateArray(Command::kOnlyUnit, 1);
  menus.At(Command::kOnlyUnit).visible = units.empty();
  std::list<MenuItem> items;
  for (const MobileUnit& unit : units) {
    const int i = static_cast<int>(items.size()) + 1;
    MenuItem& item = items.emplace_back(UserEntry(menus, Command::kOnlyUnit, i, CaptionOf(unit)));
    item.tag = EncodeMobileUnit(unit);
    item.checkable = true;
    item.checked = unit.enabled;
  }
  menus.AppendToArray(Command::kOnlyUnit, std::move(items));
}

void ShowUnitFlags(MenuModel& menus, const std::vector<MobileUnit>& units) {
  for (MenuItem& item : menus.ArrayParent(Command::kOnlyUnit)->children) {
    if (item.index > 0) item.checked = units[static_cast<std::size_t>(item.index) - 1].enabled;
  }
}

void MarkStaleUnits(MenuItem& menu, const std::vector<MobileUnit>& units,
                    const std::function<bool(const MobileUnit&)>& isStale) {
  for (MenuItem& item : menu.children) {
    if (item.command != Command::kOnlyUnit || item.index == 0) continue;
    const MobileUnit& unit = units[static_cast<std::size_t>(item.index) - 1];
    item.caption = CaptionOf(unit) + (isStale(unit) ? " (stale)" : "");
  }
}

void ShowUnitsToFit(MenuModel& menus, const std::vector<MobileUnit>& units) {
  menus.TruncateArray(Command::kFitUnit, 1);
  std::list<MenuItem> items;
  for (const MobileUnit& unit : units) {
    if (!unit.enabled) continue;
    const int k = static_cast<int>(items.size()) + 1;
    items.push_back(UserEntry(menus, Command::kFitUnit, k, CaptionOf(unit)));
  }
  menus.At(Command::kFitUnit).visible = items.empty();
  menus.AppendToArray(Command::kFitUnit, std::move(items));
}

}  // namespace pallomir
