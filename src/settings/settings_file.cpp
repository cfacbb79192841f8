#include "settings/settings_file.h"

#include <optional>
#include <utility>

#include "base/whole_file.h"
#include "platform/folders.h"

namespace pallomir {
namespace {

// A thousand times what the largest unit list needs; a longer file is not ours.
constexpr std::size_t kMaxFileSize = std::size_t{64} << 20;

// What lies in the file's place is no settings file. Any other error may be gone at the next start.
bool IsDamage(std::error_code error) {
  return error == std::errc::is_a_directory || error == std::errc::file_too_large;
}

}  // namespace

std::filesystem::path SettingsFolder(const std::filesystem::path& commonDataFolder) {
  return commonDataFolder / "pallomir";
}

SettingsFile::SettingsFile(const std::filesystem::path& commonDataFolder,
                           std::function<void(const std::string&)> report)
    : path_(SettingsFolder(commonDataFolder) / "Registry.txt"), report_(std::move(report)) {}

SettingsFile::Loaded SettingsFile::Load() {
  MakeFolder(path_.parent_path());
  std::error_code error;
  const auto text = ReadWholeFile(path_, kMaxFileSize, error);
  if (!text && error == std::errc::no_such_file_or_directory) return {};
  Loaded loaded;
  std::string reason;
  if (text) {
    ParsedSettings parsed = ParseSettings(*text);
    loaded.table = std::move(parsed.table);
    if (parsed.damagedLines == 0) {
      content_ = *text;
      return loaded;
    }
    reason = std::to_string(parsed.damagedLines) + " damaged line(s) left out";
    writable_ =
        KeepAside([&text](const std::filesystem::path& aside) { return ReplaceFile(aside, *text); }, *text);
  } else {
    reason = error.message();
    writable_ = IsDamage(error) && KeepAside([this](const std::filesystem::path& aside) {
                  std::error_code renamed;
                  std::filesystem::rename(path_, aside, renamed);
                  return renamed;
                });
  }
  report_("settings file " + path_.string() + ": " + reason);
  if (!writable_) {
    loaded.trouble = "The settings file " + path_.string() + " can't be used: " + reason +
                     ".\nIt is left as it is. Nothing is stored in this run" +
                     (text ? "." : ", which goes on with default settings.");
  }
  return loaded;
}

std::error_code SettingsFile::Write(const SettingsTable& table) {
  if (!writable_) return {};
  std::string text;
  for (const auto& entry : table.Entries()) text += SettingsLine(entry.key, entry.value) + "\r\n";
  if (text == content_) return {};
  MakeFolder(path_.parent_path());
  const std::error_code error = ReplaceFile(path_, text);
  if (!error) content_ = std::move(text);
  return error;
}

// Under the first free number, unless an earlier start has kept the same text already.
bool SettingsFile::KeepAside(const std::function<std::error_code(const std::filesystem::path&)>& keep,
                             std::string_view content) {
  constexpr int kMaxCopies = 99;
  for (int number = 1; number <= kMaxCopies; ++number) {
    std::filesystem::path aside = path_;
    aside += ".damaged" + std::to_string(number);
    std::error_code error;
    const auto kept = ReadWholeFile(aside, kMaxFileSize, error);
    if (kept && kept == content && !content.empty()) return true;
    if (kept || error != std::errc::no_such_file_or_directory) continue;
    error = keep(aside);
    report_(error ? "it could not be kept aside: " + error.message() : "it is kept as " + aside.string());
    return !error;
  }
  report_("it could not be kept aside: there are " + std::to_string(kMaxCopies) + " copies already");
  return false;
}

}  // namespace pallomir
