#include "settings/settings_text.h"

#include <algorithm>
#include <optional>

namespace pallomir {
namespace {

// Begins a text whose line breaks, and this character itself, are escaped by a backslash.
constexpr char kEscapedMark = '\x01';

bool NeedsEscape(std::string_view text) {
  return text.starts_with(kEscapedMark) || text.find_first_of("\r\n") != std::string_view::npos;
}

std::string Escaped(std::string_view text) {
  std::string escaped(1, kEscapedMark);
  for (const char c : text) {
    if (c == '\r')
      escaped += "\\r";
    else if (c == '\n')
      escaped += "\\n";
    else if (c == '\\')
      escaped += "\\\\";
    else
      escaped += c;
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  if (!text.starts_with(kEscapedMark)) return std::string(text);
  std::string plain;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char code = text[++i];
    plain += code == 'r' ? '\r' : code == 'n' ? '\n' : code;
  }
  return plain;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : NeedsEscape(text) ? Escaped(text) : std::string(text)) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + '"';
}

// Takes one quoted field from the front of the line.
std::optional<std::string> TakeQuoted(std::string_view& line) {
  if (!line.starts_with('"')) return std::nullopt;
  std::string text;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] != '"') {
      text += line[i];
    } else if (i + 1 < line.size() && line[i + 1] == '"') {
      text += line[i++];
    } else {
      line.remove_prefix(i + 1);
      return Unescaped(text);
    }
  }
  return std::nullopt;
}

bool ParseLine(std::string_view line, SettingsTable& table) {
  const auto key = TakeQuoted(line);
  if (!key || !line.starts_with(',')) return false;
  line.remove_prefix(1);
  const auto value = TakeQuoted(line);
  if (!value || !line.empty()) return false;
  table.Set(*key, *value);
  return true;
}

}  // namespace

const std::string* SettingsTable::Find(std::string_view key) const {
  const auto place = places_.find(key);
  return place == places_.end() ? nullptr : &entries_[place->second].value;
}

void SettingsTable::Set(std::string_view key, std::string_view value) {
  const auto place = places_.find(key);
  if (place != places_.end()) {
    entries_[place->second].value = value;
    return;
  }
  places_.emplace(key, entries_.size());
  entries_.push_back({std::string(key), std::string(value)});
}

std::string SettingsLine(std::string_view key, std::string_view value) {
  return Quoted(key) + "," + Quoted(value);
}

ParsedSettings ParseSettings(std::string_view text) {
  ParsedSettings parsed;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty() && !ParseLine(line, parsed.table)) ++parsed.damagedLines;
  }
  return parsed;
}

}  // namespace pallomir
