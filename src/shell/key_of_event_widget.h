#pragma once

#include <QKeyEvent>
#include <optional>

namespace pallomir {

/// A key as the hot keys know it: modifier mask of shell/hot_keys.h and an upper-case letter or a digit.
struct PressedKey {
  int modifiers = 0;
  char key = 0;
};

/// Nothing for keys that no hot key has: keypad, repeats, Super, others than letters and digits. Digits are
/// told by where they lie, so that Shift and the layout don't change them.
std::optional<PressedKey> KeyOfEvent(const QKeyEvent& event);

}  // namespace pallomir
