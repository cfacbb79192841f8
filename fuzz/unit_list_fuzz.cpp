#include <algorithm>
#include <set>

#include "commands/menus.h"
#include "commands/unit_menu.h"
#include "fuzz_input.h"
#include "tracking/mobile_units.h"
#include "tracking/packets.h"

// The stored list of mobile units, the menu that shows it, and the books kept of it.
//
// Flags: -max_len=64

namespace pallomir::fuzz {
namespace {

MenuModel UnitMenu() {
  MenuModel menus;
  BuildMenus(menus);
  return menus;
}

void CheckMenu(const MenuModel& menus, const std::vector<MobileUnit>& units) {
  PALLOMIR_DEMAND(menus.Count(Command::kOnlyUnit) == static_cast<int>(units.size()) + 1);
  menus.ForEach(Command::kOnlyUnit, [&units](const MenuItem& item) {
    PALLOMIR_DEMAND(item.visible == (item.index > 0 || units.empty()));
    if (item.index == 0) return;
    MobileUnit unit = ParseMobileUnit(item.tag);
    unit.enabled = item.checked;
    PALLOMIR_DEMAND(unit == units[static_cast<std::size_t>(item.index) - 1]);
  });
}

void CheckBook(const UnitBook& book, const std::vector<MobileUnit>& units) {
  PALLOMIR_DEMAND(book.definedCount == units.size());
  PALLOMIR_DEMAND(book.listToEnabled.size() == units.size() + 1);
  PALLOMIR_DEMAND(book.enabledToList.size() == book.enabledCount + 1);
  PALLOMIR_DEMAND(book.descriptions.size() == book.enabledCount + 1);
  for (std::size_t k = 1; k <= book.enabledCount; ++k) {
    const std::size_t i = book.enabledToList[k];
    PALLOMIR_DEMAND(book.listToEnabled[i] == k && units[i - 1].enabled);
  }
  std::set<std::string, std::less<>> seen;
  for (std::size_t i = 1; i <= units.size(); ++i) {
    const MobileUnit& unit = units[i - 1];
    PALLOMIR_DEMAND(unit.enabled == (book.listToEnabled[i] != 0));
    if (unit.enabled && seen.insert(unit.id).second)
      PALLOMIR_DEMAND(book.EnabledPositionOf(unit.id) == book.listToEnabled[i]);
  }
  // The locator and the station cut the request into IDs of 12 characters.
  std::string_view request = book.requestText;
  PALLOMIR_DEMAND(request.starts_with('D'));
  for (request.remove_prefix(1); !request.empty(); request.remove_prefix(kUnitIdSize))
    PALLOMIR_DEMAND(IsUnitId(request.substr(0, kUnitIdSize)));
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view stored = AsText({data, size});
  const std::vector<MobileUnit> units = ParseMobileUnits(stored);
  PALLOMIR_DEMAND(units.size() == static_cast<std::size_t>(std::ranges::count(stored, '~')));
  for (const MobileUnit& unit : units)
    PALLOMIR_DEMAND(unit.id.size() == kUnitIdSize || unit.description.empty());
  PALLOMIR_DEMAND(ParseMobileUnits(EncodeMobileUnits(units)) == units);

  // One menu for all inputs, as it is for all lists of a session.
  static MenuModel menus = fuzz::UnitMenu();
  ShowUnitsInMenu(menus, units);
  fuzz::CheckMenu(menus, units);
  fuzz::CheckBook(EnumerateUnits(units), units);
  return 0;
}
