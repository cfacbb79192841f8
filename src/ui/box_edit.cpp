#include "ui/box_edit.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace pallomir {
namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Length of the UTF-8 character at the front of `text`, or 0 where there is none.
std::size_t CharacterSize(std::string_view text) {
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (text.empty()) return 0;
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < size) return 0;
  std::uint32_t code = lead & (0xFFu >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    if (!IsContinuation(text[i])) return 0;
    code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  }
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  return code >= kSmallest[size] && code <= 0x10FFFF && !isSurrogate ? size : 0;
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// A text from elsewhere on one line: what breaks lines at its ends goes, in between it becomes a blank.
std::string OnOneLine(std::string_view text) {
  std::string line;
  bool isBlankOwed = false;
  for (const char c : text) {
    if (IsControl(c)) {
      isBlankOwed = !line.empty();
      continue;
    }
    if (isBlankOwed) line += ' ';
    isBlankOwed = false;
    line += c;
  }
  return line;
}

std::string WithoutSeparators(std::string_view text) {
  std::string rest;
  std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
               [](char c) { return c != ':' && c != '-' && c != ' ' && !IsControl(c); });
  return rest;
}

// The character as the box holds it, or nothing where it is of the wrong kind.
std::optional<std::string> Accepted(const BoxRules& rules, std::string_view character) {
  if (!rules.upperHex) return std::string(character);
  const char c = character.front();
  if (c >= 'a' && c <= 'f') return std::string(1, static_cast<char>(c - 'a' + 'A'));
  const bool isHex = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
  return isHex ? std::optional(std::string(1, c)) : std::nullopt;
}

// What arrives, before the rules look at it.
std::string Incoming(const BoxRules& rules, const BoxEdit& edit) {
  const std::string text = ValidUtf8(edit.text);
  return edit.action == BoxAction::kPaste && rules.upperHex ? WithoutSeparators(text) : OnOneLine(text);
}

}  // namespace

std::string_view InsertIntoBox(const BoxRules& rules, const BoxEdit& edit, BoxText& box) {
  const std::string incoming = Incoming(rules, edit);
  const std::size_t kept = box.text.size() - (box.span.end - box.span.begin);
  std::string taken;
  std::string_view refusal;
  for (std::string_view rest = incoming; !rest.empty();) {
    const std::string_view character = rest.substr(0, CharacterSize(rest));
    rest.remove_prefix(character.size());
    const auto accepted = Accepted(rules, character);
    if (rules.barred.find(character) != std::string::npos) {
      if (refusal.empty()) refusal = rules.barredRefusal;
    } else if (!accepted) {
      if (refusal.empty()) refusal = rules.refusal;
    } else if (rules.limit != 0 && kept + taken.size() + accepted->size() > rules.limit) {
      if (refusal.empty()) refusal = rules.refusal;
      break;  // a shorter character further on would fit, but tear the text apart
    } else {
      taken += *accepted;
    }
  }
  if (!taken.empty()) {
    box.text.replace(box.span.begin, box.span.end - box.span.begin, taken);
    box.span.begin = box.span.end = box.span.begin + taken.size();
  }
  return refusal;
}

void RemoveFromBox(BoxAction action, BoxText& box) {
  auto [begin, end] = box.span;
  if (begin == end && action == BoxAction::kBackspace && begin > 0) {
    begin = ClampSpan(box.text, {begin - 1, end}).begin;
  } else if (begin == end && action == BoxAction::kDelete && end < box.text.size()) {
    end += CharacterSize(std::string_view(box.text).substr(end));
  }
  box.text.erase(begin, end - begin);
  box.span = {begin, begin};
}

bool IsFull(const BoxRules& rules, std::string_view text) {
  BoxText box;
  return InsertIntoBox(rules, {BoxAction::kType, std::string(text)}, box).empty() && box.text == text &&
         text.size() == rules.limit;
}

BoxSpan ClampSpan(std::string_view text, BoxSpan span) {
  const auto clamp = [&](std::size_t at) {
    at = std::min(at, text.size());
    while (at > 0 && at < text.size() && IsContinuation(text[at])) --at;
    return at;
  };
  return {clamp(std::min(span.begin, span.end)), clamp(std::max(span.begin, span.end))};
}

std::string ValidUtf8(std::string_view text) {
  std::string valid;
  while (!text.empty()) {
    const std::size_t size = CharacterSize(text);
    valid += size == 0 ? "?" : text.substr(0, size);
    text.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return valid;
}

}  // namespace pallomir
