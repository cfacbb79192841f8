#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pallomir {

/// Selected bytes of a UTF-8 text; begin == end is the bare cursor.
struct BoxSpan {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool operator==(const BoxSpan&) const = default;
};

/// A text box: its text (UTF-8) and what is selected in it.
struct BoxText {
  std::string text;
  BoxSpan span;
  bool operator==(const BoxText&) const = default;
};

/// What a box takes. A refused character leaves the text as it is.
struct BoxRules {
  bool upperHex = false;    ///< letters become upper case; 0-9 and A-F only
  std::size_t limit = 0;    ///< bytes, as the text is stored; 0: no limit
  std::string refusal;      ///< the message for a character of the wrong kind, or one too many
  std::string barred = {};  ///< ASCII characters that the stored form can't hold
  std::string barredRefusal = {};
};

enum class BoxAction {
  kType,       ///< text comes from the keyboard or an input method
  kPaste,      ///< text comes from elsewhere: clipboard, drop, a tool
  kBackspace,  ///< removes the selection, or the character before the cursor
  kDelete,     ///< removes the selection, or the character after the cursor
  kUndo,
  kRedo,
};

struct BoxEdit {
  BoxAction action = BoxAction::kType;
  std::string text = {};
};

/// Puts `text` in the place of the selection, character by character as far as the rules take them; with none
/// taken the box stays as it is. Separators and blanks in a pasted hexadecimal text are left out silently,
/// line breaks in any other become blanks. Gives the message for what was refused, or nothing.
std::string_view InsertIntoBox(const BoxRules& rules, const BoxEdit& edit, BoxText& box);

/// Backspace or Delete.
void RemoveFromBox(BoxAction action, BoxText& box);

/// Whether the rules take all of `text`, and it is as long as it may be.
bool IsFull(const BoxRules& rules, std::string_view text);

/// The span with both ends inside the text, in order and between two characters.
BoxSpan ClampSpan(std::string_view text, BoxSpan span);

/// The text with "?" in place of each byte that is not part of a UTF-8 character.
std::string ValidUtf8(std::string_view text);

}  // namespace pallomir
