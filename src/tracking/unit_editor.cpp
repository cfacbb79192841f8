#include "tracking/unit_editor.h"

#include <map>
#include <string_view>

#include "tracking/packets.h"

namespace pallomir {
namespace {

constexpr std::string_view kUntouched = "Unit #";
constexpr char kIdPlaceholder[] = "Add New ID Here";
constexpr char kDescriptionPlaceholder[] = "Enter This Mobile Unit's Description Here";

ListGridSetup UnitEditorSetup() {
  ListGridSetup setup;
  setup.messageTitle = "pallomir key entry error";
  ListGridColumn id{"txtID", "ID", kIdPlaceholder, 18};
  id.rules = {true, kUnitIdSize, "Enter up to 12 \"hex\" characters (0-9, a-f, A-F)"};
  id.mustBeFull = true;
  id.sameRule = "the first enabled one receives the data";
  ListGridColumn description{"txtDesc", "Description", kDescriptionPlaceholder};
  description.rules.barred = "~";
  description.rules.barredRefusal = "A description can't contain \"~\"";
  setup.columns = {id, description};
  setup.mostRows = kMaxMobileUnits;
  setup.mostChecked = kMostUnitsPerRequest;
  setup.mostCheckedRule = "a request for data names no more units";
  return setup;
}

// "Unit #" and nothing but a number.
bool IsNumbered(std::string_view description) {
  return description.find_first_not_of("0123456789", kUntouched.size()) == std::string_view::npos;
}

ListGridRow RowOf(const MobileUnit& unit) {
  ListGridRow row{unit.enabled, {unit.id, unit.description}};
  if (unit.description.starts_with(kUntouched)) {
    row.texts[kUnitDescriptionColumn] = kDescriptionPlaceholder;
    if (!IsNumbered(unit.description)) row.carried = unit.description;
  }
  return row;
}

}  // namespace

ListGrid OpenUnitEditor(const std::vector<MobileUnit>& units) {
  ListGrid grid(UnitEditorSetup());
  for (const MobileUnit& unit : units) grid.Fill(RowOf(unit));
  return grid;
}

std::vector<MobileUnit> UnitsOfEditor(const ListGrid& grid) {
  std::vector<MobileUnit> units;
  for (std::size_t row = 1; row <= grid.ListedCount(); ++row) {
    const ListGridRow& from = grid.Row(row);
    MobileUnit unit{from.checked, grid.Result(row, kUnitIdColumn), grid.Result(row, kUnitDescriptionColumn)};
    if (grid.IsPlaceholder(row, kUnitDescriptionColumn)) {
      unit.description = from.carried.empty() ? std::string(kUntouched) + std::to_string(row) : from.carried;
    }
    units.push_back(unit);
  }
  return units;
}

void TakeChangedFlags(ListGrid& grid, const std::vector<MobileUnit>& before,
                      const std::vector<MobileUnit>& now) {
  std::map<std::string, std::vector<std::size_t>> rowsWithId;
  for (std::size_t row = 1; row <= grid.ListedCount(); ++row)
    rowsWithId[grid.Row(row).texts[kUnitIdColumn]].push_back(row);
  std::map<std::string, std::size_t> turns;
  for (std::size_t i = 0; i < before.size() && i < now.size(); ++i) {
    const std::size_t turn = turns[now[i].id]++;
    const auto rows = rowsWithId.find(now[i].id);
    if (now[i].enabled == before[i].enabled || rows == rowsWithId.end()) continue;
    if (turn < rows->second.size()) grid.SetChecked(rows->second[turn], now[i].enabled);
  }
}

}  // namespace pallomir
