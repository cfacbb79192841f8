#pragma once

#include <QKeyEvent>
#include <optional>

namespace pallomir {

/// A key as the hot keys know it: modifier mask of commands/hot_keys.h, and an upper-case letter, a digit,
/// "[" or
/// "]".
struct PressedKey {
  int modifiers = 0;
  char key = 0;
};

/// Nothing for keys that no hot key has: keypad, repeats, Super, other keys. Digits and brackets are told by
/// where they lie, so that Shift and the layout don't change them; letters by what is on them, or, where that
/// is no Latin script, by where they lie on a US keyboard. AltGr counts as Alt.
std::optional<PressedKey> KeyOfEvent(const QKeyEvent& event);

}  // namespace pallomir
