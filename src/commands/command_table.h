#pragma once

#include <array>
#include <span>

#include "commands/command.h"

namespace pallomir {

/// Modifier mask of a key; combinations add.
enum KeyModifier { kNoModifier = 0, kShift = 1, kCtrl = 2, kAlt = 4 };

/// Keys that have no character of their own.
namespace special_key {
inline constexpr char kEnter = '\r';
inline constexpr char kEscape = '\x1b';
inline constexpr char kLeft = '\x11';
inline constexpr char kUp = '\x12';
inline constexpr char kRight = '\x13';
inline constexpr char kDown = '\x14';
inline constexpr char kPageUp = '\x15';
inline constexpr char kPageDown = '\x16';
}  // namespace special_key

/// Keys that give a command, and what the helps say about them.
struct HotKey {
  int modifiers = kNoModifier;
  /// Each character is a key: an upper-case letter, a digit, another key's own or a special one.
  const char* keys = "";
  bool isNumber = false;         ///< the digit that was pressed is the command's number
  int number = 0;                ///< the command's number otherwise
  const char* text = "";         ///< what they do, in a line
  int line = 0;                  ///< place in the key list from 1; 0: not listed
  const char* label = "";        ///< in the key list
  const char* padding = "";      ///< that the key list has behind `text`
  const char* description = "";  ///< on the keyboard picture
  bool whileDrawing = false;     ///< acts while a zone is drawn, and then before all others
  bool isPosition = false;       ///< the command's number is `number` and the key's position in `keys`
};

/// One command, or one entry of an array of entries.
struct CommandRow {
  enum class State {
    kReady,
    kGrey,    ///< shown, but can't be chosen; where it stands for an empty array, the entries behind it can
    kHidden,  ///< shown only while it can be chosen
    kLater,   ///< not built yet: its entry does not show, its key stays silent
  };

  Command command;
  const char* name = "";            ///< control name of the entry, "mnuViewReload"
  Command parent = Command::kNone;  ///< the menu it stands in; kNone: by key only
  const char* caption = "";         ///< with "&" before its access key; "-" is a line
  int index = 0;                    ///< in an array of entries
  const char* tag = "";
  bool isCheckable = false;  ///< a toggle or a choice
  bool isChecked = false;
  State state = State::kReady;
  std::array<HotKey, 3> keys = {};
};

/// All commands. The entries of a menu stand in the order of the menu, a menu before its entries.
std::span<const CommandRow> CommandTable();

/// False for a command whose work is not built yet.
bool IsBuilt(Command command);

}  // namespace pallomir
