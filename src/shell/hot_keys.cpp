#include "shell/hot_keys.h"

#include <algorithm>

namespace pallomir {
namespace {

// Stands for all digits that name a unit; no key has this character.
constexpr char kUnitDigit = '\0';

struct Row {
  int modifiers;
  char key;
  KeyAction action;
};

constexpr Row kRows[] = {
    {kNoModifier, 'A', KeyAction::kShowAllUnits},
    {kNoModifier, '0', KeyAction::kShowAllUnits},
    {kNoModifier, kUnitDigit, KeyAction::kShowOnlyUnit},
    {kNoModifier, 'F', KeyAction::kFitAll},
    {kNoModifier, 'R', KeyAction::kReload},
    {kShift, '0', KeyAction::kShowAllUnits},
    {kShift, kUnitDigit, KeyAction::kToggleUnit},
};

bool NamesUnit(char key, int unitCount) {
  return key >= '1' && key <= '9' && key - '0' <= std::min(unitCount, 9);
}

}  // namespace

std::optional<KeyCommand> FindKeyCommand(int modifiers, char key, int unitCount) {
  for (const Row& row : kRows) {
    if (row.modifiers != modifiers) continue;
    if (row.key == key) return KeyCommand{row.action, 0};
    if (row.key == kUnitDigit && NamesUnit(key, unitCount)) return KeyCommand{row.action, key - '0'};
  }
  return std::nullopt;
}

}  // namespace pallomir
