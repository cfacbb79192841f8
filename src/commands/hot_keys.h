#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/command_table.h"

namespace pallomir {

/// A command as it was given, with the number that belongs to it.
struct GivenCommand {
  Command command = Command::kNone;
  int number = 0;
  bool operator==(const GivenCommand&) const = default;
};

/// What the key does. `key` is an upper-case letter, a digit, or another key's character; `unitCount` is the
/// number of defined units, of which digits reach the first nine. Nothing for a key without a command under
/// these modifiers.
std::optional<GivenCommand> FindKeyCommand(int modifiers, char key, int unitCount);

/// The same for the keys that have another meaning while a zone is drawn.
std::optional<GivenCommand> FindDrawingCommand(int modifiers, char key);

/// The key of a menu entry as menus show it, "Ctrl+T"; empty where it has none.
std::string MenuKeyText(Command command, int index = 0);

/// The captions of the keyboard picture's keys, in the order of the help table. The views last for ever.
std::vector<std::string_view> KeyCaptions();

/// What the keyboard picture says about the key with this caption; lines end with CR LF. Empty for a key that
/// does nothing, and for a caption that is not in the table.
std::string_view KeyDescription(std::string_view caption);

/// The two columns of the key list, line for line; lines are separated by CR LF.
struct KeyListText {
  std::string hotKeys;
  std::string functions;
};
KeyListText KeyList();

/// All keys that do something by now, for the documents: what is pressed, "Ctrl+1–9", and what it does. Those
/// of the key list come first and in its order.
struct KeyRow {
  std::string keys;
  std::string text;
};
std::vector<KeyRow> KeyRows();

}  // namespace pallomir
