#include "shell/settings_store.h"

#include <optional>
#include <utility>

#include "base/whole_file.h"
#include "platform/folders.h"

namespace pallomir {
namespace {

// A thousand times what the largest unit list needs; a longer file is not ours.
constexpr std::size_t kMaxFileSize = std::size_t{64} << 20;

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

std::string CompositeKey(std::string_view key) {
  return std::string(kSettingsApplication) + "~" + std::string(kSettingsSection) + "~" + std::string(key);
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

SettingsStore::SettingsStore(std::filesystem::path commonDataFolder,
                             std::function<void(const std::string&)> report)
    : file_(std::move(commonDataFolder) / "pallomir" / "Registry.txt"), report_(std::move(report)) {}

std::string SettingsStore::Get(std::string_view key, std::string_view defaultValue) {
  LoadOnce();
  const std::string composite = CompositeKey(key);
  if (!table_.Find(composite)) table_.Set(composite, defaultValue);
  return *table_.Find(composite);
}

std::string SettingsStore::Save(std::string_view key, std::string_view value) {
  LoadOnce();
  table_.Set(CompositeKey(key), value);
  if (!writable_) return std::string(value);
  std::string text;
  for (const auto& entry : table_.Entries()) text += SettingsLine(entry.key, entry.value) + "\r\n";
  MakeFolder(file_.parent_path());
  if (const auto error = ReplaceFile(file_, text)) {
    report_("settings not stored in " + file_.string() + ": " + error.message());
  }
  return std::string(value);
}

void SettingsStore::LoadOnce() {
  if (std::exchange(loaded_, true)) return;
  MakeFolder(file_.parent_path());
  std::error_code error;
  const auto text = ReadWholeFile(file_, kMaxFileSize, error);
  if (!text) {
    if (error == std::errc::no_such_file_or_directory) return;
    report_("settings file " + file_.string() + " can't be read: " + error.message());
    KeepAside([this](const std::filesystem::path& aside) {
      std::error_code renamed;
      std::filesystem::rename(file_, aside, renamed);
      return renamed;
    });
    return;
  }
  ParsedSettings parsed = ParseSettings(*text);
  table_ = std::move(parsed.table);
  if (parsed.damagedLines == 0) return;
  report_(std::to_string(parsed.damagedLines) + " damaged line(s) in " + file_.string() + " left out");
  KeepAside([&text](const std::filesystem::path& aside) { return ReplaceFile(aside, *text); }, *text);
}

// Under the first free number, unless an earlier start has kept the same text already. Where nothing could be
// kept the file is not written any more in this run.
void SettingsStore::KeepAside(const std::function<std::error_code(const std::filesystem::path&)>& keep,
                              std::string_view content) {
  constexpr int kMaxCopies = 99;
  for (int number = 1; number <= kMaxCopies; ++number) {
    std::filesystem::path aside = file_;
    aside += ".damaged" + std::to_string(number);
    std::error_code error;
    const auto kept = ReadWholeFile(aside, kMaxFileSize, error);
    if (kept && kept == content && !content.empty()) return;
    if (kept || error != std::errc::no_such_file_or_directory) continue;
    error = keep(aside);
    if (!error) return report_("it is kept as " + aside.string());
    report_("it could not be kept aside: " + error.message());
    break;
  }
  writable_ = false;
  report_("settings are not stored in this run, so that nothing is lost");
}

}  // namespace pallomir
