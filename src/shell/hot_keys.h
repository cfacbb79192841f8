#pragma once

#include <optional>

namespace pallomir {

/// Modifier mask of a key; combinations add.
enum KeyModifier { kNoModifier = 0, kShift = 1, kCtrl = 2, kAlt = 4 };

enum class KeyAction {
  kShowAllUnits,
  kShowOnlyUnit,  ///< N
  kToggleUnit,    ///< N
  kFitAll,
  kReload,
};

struct KeyCommand {
  KeyAction action;
  int number = 0;  ///< the digit, for actions with N
  bool operator==(const KeyCommand&) const = default;
};

/// What the key does. `key` is an upper-case letter, a digit, or another key's character; `unitCount` is the
/// number of defined units, of which digits reach the first nine. Nothing for a key without a row in the
/// table.
std::optional<KeyCommand> FindKeyCommand(int modifiers, char key, int unitCount);

}  // namespace pallomir
