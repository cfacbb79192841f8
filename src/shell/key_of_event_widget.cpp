#include "shell/key_of_event_widget.h"

#include "shell/hot_keys.h"

namespace pallomir {
namespace {

// Scan codes of the digit row, the same on X11 and Wayland: evdev's KEY_1 .. KEY_0 and 8.
constexpr quint32 kFirstDigitCode = 10;
constexpr quint32 kLastDigitCode = 19;

std::optional<char> CharacterOf(const QKeyEvent& event) {
  const quint32 code = event.nativeScanCode();
  if (code >= kFirstDigitCode && code <= kLastDigitCode) {
    return static_cast<char>('0' + (code - kFirstDigitCode + 1) % 10);
  }
  const int key = event.key();
  if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
    return static_cast<char>(key);
  return std::nullopt;
}

}  // namespace

std::optional<PressedKey> KeyOfEvent(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  if (event.isAutoRepeat() || held.testFlag(Qt::KeypadModifier) || held.testFlag(Qt::MetaModifier))
    return std::nullopt;
  const auto key = CharacterOf(event);
  if (!key) return std::nullopt;
  int modifiers = kNoModifier;
  if (held.testFlag(Qt::ShiftModifier)) modifiers |= kShift;
  if (held.testFlag(Qt::ControlModifier)) modifiers |= kCtrl;
  if (held.testFlag(Qt::AltModifier)) modifiers |= kAlt;
  return PressedKey{modifiers, *key};
}

}  // namespace pallomir
