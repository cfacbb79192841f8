#include "station/unit_lists.h"

namespace pallomir::station {

std::string UnitLines(std::span<const StoredUnit> units) {
  std::string lines;
  for (const StoredUnit& unit : units) lines += unit.id + " " + unit.description + "\n";
  return lines;
}

std::string ClientUnitList(std::span<const StoredUnit> units) {
  std::string list;
  for (const StoredUnit& unit : units) list += "X" + unit.id + unit.description + "~";
  return list;
}

}  // namespace pallomir::station
