#include "commands/hot_keys.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pallomir {
namespace {

// The keyboard picture's keys in the order of the help table.
constexpr std::string_view kCaptions[] = {
    "A", "B", "C", "D", "E", "F",     "G",   "H",   "I",    "J",    "K",   "L",  "M", "N",
    "O", "P", "Q", "R", "S", "T",     "U",   "V",   "W",    "X",    "Y",   "Z",  "0", "1",
    "2", "3", "4", "5", "6", "7",     "8",   "9",   "`",    "-",    "=",   "[",  "]", "\\",
    ";", "'", ",", ".", "/", "space", "ctl", "alt", "shft", "caps", "tab", "cr", "bk"};

constexpr int kUnitsWithKey = 9;

bool IsFor(const HotKey& hotKey, char key) {
  return std::string_view(hotKey.keys).find(key) != std::string_view::npos;
}

std::string ModifierText(int modifiers) {
  return std::string(modifiers & kCtrl ? "Ctrl+" : "") + (modifiers & kAlt ? "Alt+" : "") +
         (modifiers & kShift ? "Shift+" : "");
}

std::string KeyName(char key) {
  switch (key) {
    case special_key::kEnter:
      return "Enter";
    case special_key::kEscape:
      return "Escape";
    case special_key::kLeft:
      return "Left";
    case special_key::kUp:
      return "Up";
    case special_key::kRight:
      return "Right";
    case special_key::kDown:
      return "Down";
    case special_key::kPageUp:
      return "Page Up";
    case special_key::kPageDown:
      return "Page Down";
    default:
      return {key};
  }
}

struct KeyOfCommand {
  const HotKey* key;
  Command command;
  int Line() const { return key->line; }
};

std::vector<KeyOfCommand> AllKeys() {
  std::vector<KeyOfCommand> all;
  for (const CommandRow& row : CommandTable()) {
    for (const HotKey& key : row.keys)
      if (*key.keys) all.push_back({&key, row.command});
  }
  return all;
}

// In the order of the key list, those without a line behind.
std::vector<KeyOfCommand> KeysByLine() {
  std::vector<KeyOfCommand> keys = AllKeys();
  // Not in std::ranges: clang 14, which builds the fuzzers, can't take what that one returns.
  const auto unlisted = std::stable_partition(keys.begin(), keys.end(),
                                              [](const KeyOfCommand& each) { return each.Line() != 0; });
  std::ranges::sort(keys.begin(), unlisted, {}, &KeyOfCommand::Line);
  return keys;
}

bool NeedsUnit(Command command) { return command == Command::kOnlyUnit || command == Command::kToggleUnit; }

std::optional<GivenCommand> Find(int modifiers, char key, bool whileDrawing) {
  for (const CommandRow& row : CommandTable()) {
    for (const HotKey& hotKey : row.keys) {
      if (hotKey.whileDrawing != whileDrawing || hotKey.modifiers != modifiers || !IsFor(hotKey, key))
        continue;
      const int position = static_cast<int>(std::string_view(hotKey.keys).find(key));
      const int number = hotKey.number + (hotKey.isPosition ? position : 0);
      return GivenCommand{row.command, hotKey.isNumber ? key - '0' : number};
    }
  }
  return std::nullopt;
}

void AppendLine(std::string& column, const std::string& line) {
  if (!column.empty()) column += "\r\n";
  column += line;
}

std::string KeysText(const HotKey& key) {
  std::string text;
  if (key.isNumber)
    return ModifierText(key.modifiers) + key.keys[0] + "–" + std::string_view(key.keys).back();
  if (*key.keys == special_key::kLeft) return ModifierText(key.modifiers) + "arrows";
  for (const char* each = key.keys; *each; ++each)
    text += (text.empty() ? "" : ", ") + ModifierText(key.modifiers) + KeyName(*each);
  return text;
}

}  // namespace

std::optional<GivenCommand> FindKeyCommand(int modifiers, char key, int unitCount) {
  const auto given = Find(modifiers, key, false);
  return given && NeedsUnit(given->command) && given->number > unitCount ? std::nullopt : given;
}

std::optional<GivenCommand> FindDrawingCommand(int modifiers, char key) { return Find(modifiers, key, true); }

std::string MenuKeyText(Command command, int index) {
  for (const CommandRow& row : CommandTable()) {
    const HotKey& key = row.keys.front();
    if (row.command != command || !*key.keys) continue;
    if (key.isNumber && index >= 1 && index <= kUnitsWithKey)
      return ModifierText(key.modifiers) + std::to_string(index);
    if (!key.isNumber && row.index == index) return ModifierText(key.modifiers) + KeyName(key.keys[0]);
  }
  return {};
}

std::vector<std::string_view> KeyCaptions() { return {std::begin(kCaptions), std::end(kCaptions)}; }

std::string_view KeyDescription(std::string_view caption) {
  if (caption.size() != 1) return "";
  for (const auto& [key, command] : AllKeys())
    if (IsFor(*key, caption.front()) && *key->description) return key->description;
  return "";
}

KeyListText KeyList() {
  KeyListText list;
  for (const auto& [key, command] : KeysByLine()) {
    if (key->line == 0) break;
    AppendLine(list.hotKeys, key->label);
    AppendLine(list.functions, std::string(key->text) + key->padding);
  }
  return list;
}

std::vector<KeyRow> KeyRows() {
  std::vector<KeyRow> rows;
  for (const bool whileDrawing : {false, true}) {
    for (const auto& [key, command] : KeysByLine())
      if (IsBuilt(command) && key->whileDrawing == whileDrawing) rows.push_back({KeysText(*key), key->text});
  }
  return rows;
}

}  // namespace pallomir
