#include "tracking/mobile_units.h"

#include <algorithm>

#include "tracking/packets.h"

namespace pallomir {
namespace {

constexpr char kEnabledFlag = 'X';
constexpr char kDisabledFlag = '-';
constexpr char kEnd = '~';

}  // namespace

MobileUnit ParseMobileUnit(std::string_view record) {
  MobileUnit unit;
  unit.enabled = !record.empty() && record.front() == kEnabledFlag;
  record.remove_prefix(std::min<std::size_t>(record.size(), 1));
  unit.id = record.substr(0, kUnitIdSize);
  record.remove_prefix(std::min(record.size(), kUnitIdSize));
  unit.description = record;
  return unit;
}

std::string EncodeMobileUnit(const MobileUnit& unit) {
  return (unit.enabled ? kEnabledFlag : kDisabledFlag) + unit.id + unit.description;
}

std::vector<MobileUnit> ParseMobileUnits(std::string_view stored) {
  std::vector<MobileUnit> units;
  for (std::size_t end;
       units.size() < kMaxMobileUnits && (end = stored.find(kEnd)) != std::string_view::npos;) {
    units.push_back(ParseMobileUnit(stored.substr(0, end)));
    stored.remove_prefix(end + 1);
  }
  return units;
}

std::string EncodeMobileUnits(const std::vector<MobileUnit>& units) {
  std::string stored;
  for (const MobileUnit& unit : units) stored += EncodeMobileUnit(unit) + kEnd;
  return stored;
}

std::string DemoMobileUnits() {
  return EncodeMobileUnits({{true, "000000000001", "Delivery Route"},
                            {true, "000000000002", "Demo Driver A"},
                            {true, "000000000003", "Demo Driver B"},
                            {true, "000000000004", "Demo Driver C"},
                            {false, "000000000005", "To Philly Airport"},
                            {false, "000000000006", "Dallas/Nashville"},
                            {false, "000000000007", "Nashville/Bethlehem"},
                            {false, "000000000008", "Across Wisconsin"},
                            {false, "000000000009", "Minneapolis"}});
}

std::size_t UnitBook::EnabledPositionOf(std::string_view id) const {
  const auto found = unitById.find(id);
  return found == unitById.end() ? 0 : listToEnabled[found->second];
}

UnitBook EnumerateUnits(const std::vector<MobileUnit>& units) {
  UnitBook book;
  book.definedCount = units.size();
  for (std::size_t i = 1; i <= units.size(); ++i) {
    const MobileUnit& unit = units[i - 1];
    book.listToEnabled.push_back(unit.enabled ? ++book.enabledCount : 0);
    if (!unit.enabled) continue;
    book.enabledToList.push_back(i);
    book.descriptions.push_back(unit.description);
    // An ID that is none would shift all that follow it in the request.
    if (IsUnitId(unit.id)) book.requestText += unit.id;
    book.unitById.emplace(unit.id, i);
  }
  return book;
}

std::uint32_t UnitColour(std::size_t k) {
  constexpr std::uint32_t kPalette[] = {0x000000, 0x800000, 0x008000, 0x000080};
  return kPalette[k % 4];
}

}  // namespace pallomir
