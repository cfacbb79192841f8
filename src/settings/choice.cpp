#include "settings/choice.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/number_format.h"

namespace pallomir {
namespace {

std::optional<int> ParseMeasure(const ChoiceRow<int>& row, const std::string& text) {
  const auto number = ParseNumber(text);
  if (!number || *number > row.most) return std::nullopt;
  return static_cast<int>(std::max<double>(row.least, std::trunc(*number)));
}

bool IsLegal(const ChoiceRow<int>& row, std::int64_t number) {
  return (number >= row.least && number <= row.most) || (row.extra && number == *row.extra);
}

}  // namespace

std::optional<std::string> ParseChoice(const ChoiceRow<std::string>&, const std::string& text) {
  return text;
}

std::optional<bool> ParseChoice(const ChoiceRow<bool>& row, const std::string& text) {
  if (text == row.on) return true;
  if (text == row.off || row.isOffOtherwise) return false;
  return std::nullopt;
}

std::optional<int> ParseChoice(const ChoiceRow<int>& row, const std::string& text) {
  if (!row.texts.empty()) {
    const auto found = std::ranges::find(row.texts, text);
    if (found == row.texts.end()) return std::nullopt;
    return static_cast<int>(found - row.texts.begin());
  }
  if (row.isMeasure) return ParseMeasure(row, text);
  const auto number = ParseInteger(text);
  if (!number || !IsLegal(row, *number)) return std::nullopt;
  return static_cast<int>(*number);
}

std::string ChoiceText(const ChoiceRow<std::string>&, const std::string& value) { return value; }

std::string ChoiceText(const ChoiceRow<bool>& row, bool value) {
  return std::string(value ? row.on : row.off);
}

std::string ChoiceText(const ChoiceRow<int>& row, int value) {
  if (row.texts.empty()) return std::to_string(value);
  assert(value >= 0 && static_cast<std::size_t>(value) < row.texts.size());
  return row.texts[static_cast<std::size_t>(value)];
}

std::string UselessChoice(std::string_view key, const std::string& text, const std::string& takenAs) {
  return "setting \"" + std::string(key) + "\" has no use for \"" + text + "\": taken as \"" + takenAs + "\"";
}

}  // namespace pallomir
