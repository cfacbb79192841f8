#include "commands/key_of_event_widget.h"

#include <QChar>
#include <algorithm>
#include <iterator>

#include "commands/hot_keys.h"

namespace pallomir {
namespace {

// Scan codes, the same on X11 and Wayland: the number of the key in <linux/input-event-codes.h> plus 8. Each
// run of keys lies side by side on the keyboard.
struct KeyRun {
  quint32 firstCode;
  std::string_view keys;
};
constexpr KeyRun kDigits{10, "1234567890"};
constexpr KeyRun kBrackets{34, "[]"};
constexpr KeyRun kLetterRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};

// The third level of most layouts (AltGr), which Qt has no modifier for.
constexpr quint32 kThirdLevelMask = 0x80;

std::optional<char> KeyAt(quint32 code, const KeyRun& run) {
  if (code < run.firstCode || code - run.firstCode >= run.keys.size()) return std::nullopt;
  return run.keys[code - run.firstCode];
}

bool IsLatinLetter(int key) { return key >= Qt::Key_A && key <= Qt::Key_Z; }

/// A character of another script, whose keyboard has Latin letters printed beside it. Not those of Latin
/// layouts: what lies on a US keyboard's M may be a comma there, and the M elsewhere.
bool IsOtherScript(int key) {
  if (key <= 0xff || key >= Qt::Key_Escape) return false;
  const QChar::Script script = QChar::script(static_cast<char32_t>(key));
  return script != QChar::Script_Latin && script != QChar::Script_Common;
}

std::optional<char> LetterOf(const QKeyEvent& event) {
  if (IsLatinLetter(event.key())) return static_cast<char>(event.key());
  if (!IsOtherScript(event.key())) return std::nullopt;
  for (const KeyRun& row : kLetterRows) {
    if (const auto letter = KeyAt(event.nativeScanCode(), row)) return letter;
  }
  return std::nullopt;
}

/// For events that no keyboard made: what a US keyboard has on the keys, with Shift and without.
std::optional<char> KeyWithoutPlace(int key) {
  constexpr std::string_view kPlain = "1234567890[]";
  constexpr std::string_view kShifted = "!@#$%^&*(){}";
  if (key <= 0 || key > 0x7f) return std::nullopt;
  for (const std::string_view keys : {kPlain, kShifted}) {
    const std::size_t at = keys.find(static_cast<char>(key));
    if (at != std::string_view::npos) return kPlain[at];
  }
  return std::nullopt;
}

struct SpecialKey {
  Qt::Key key;
  char character;
  bool repeats;  // a held key goes on
};
constexpr SpecialKey kSpecialKeys[] = {
    {Qt::Key_Return, special_key::kEnter, false},
    {Qt::Key_Enter, special_key::kEnter, false},
    {Qt::Key_Escape, special_key::kEscape, false},
    {Qt::Key_Left, special_key::kLeft, true},
    {Qt::Key_Up, special_key::kUp, true},
    {Qt::Key_Right, special_key::kRight, true},
    {Qt::Key_Down, special_key::kDown, true},
    {Qt::Key_PageUp, special_key::kPageUp, true},
    {Qt::Key_PageDown, special_key::kPageDown, true},
};

const SpecialKey* SpecialKeyOf(int key) {
  const auto* found =
      std::ranges::find(kSpecialKeys, key, [](const SpecialKey& each) { return int{each.key}; });
  return found == std::end(kSpecialKeys) ? nullptr : found;
}

std::optional<char> CharacterOf(const QKeyEvent& event) {
  // First, for the layouts that have a letter where others have a bracket.
  if (const auto letter = LetterOf(event)) return letter;
  const quint32 code = event.nativeScanCode();
  if (code == 0) return KeyWithoutPlace(event.key());
  if (const auto digit = KeyAt(code, kDigits)) return digit;
  return KeyAt(code, kBrackets);
}

}  // namespace

std::optional<PressedKey> KeyOfEvent(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  const SpecialKey* special = SpecialKeyOf(event.key());
  // Special keys mean the same wherever on the keyboard they are.
  if (held.testFlag(Qt::MetaModifier) || (!special && held.testFlag(Qt::KeypadModifier)) ||
      (event.isAutoRepeat() && !(special && special->repeats)))
    return std::nullopt;
  const auto key = special ? std::optional(special->character) : CharacterOf(event);
  if (!key) return std::nullopt;
  int modifiers = kNoModifier;
  if (held.testFlag(Qt::ShiftModifier)) modifiers |= kShift;
  if (held.testFlag(Qt::ControlModifier)) modifiers |= kCtrl;
  if (held.testFlag(Qt::AltModifier) || held.testFlag(Qt::GroupSwitchModifier) ||
      (event.nativeModifiers() & kThirdLevelMask) != 0) {
    modifiers |= kAlt;
  }
  return PressedKey{modifiers, *key};
}

}  // namespace pallomir
