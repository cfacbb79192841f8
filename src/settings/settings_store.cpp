#include "settings/settings_store.h"

#include <utility>

namespace pallomir {
namespace {

std::string CompositeKey(std::string_view key) {
  return std::string(kSettingsApplication) + "~" + std::string(kSettingsSection) + "~" + std::string(key);
}

}  // namespace

SettingsStore::SettingsStore(const std::filesystem::path& commonDataFolder, EventLoop& loop, Listener report,
                             Listener tell)
    : file_(commonDataFolder, report),
      report_(std::move(report)),
      tell_(std::move(tell)),
      gathering_(loop.CreateTimer("SettingsGathering", 0, [this] { WriteGathered(); })),
      retry_(loop.CreateTimer("SettingsRetry", kRetryMilliseconds, [this] { WriteGathered(); })) {}

std::string SettingsStore::Get(std::string_view key, std::string_view defaultValue) {
  LoadOnce();
  const std::string composite = CompositeKey(key);
  if (!table_.Find(composite)) table_.Set(composite, defaultValue);
  return *table_.Find(composite);
}

std::string SettingsStore::Save(std::string_view key, std::string_view value) {
  LoadOnce();
  table_.Set(CompositeKey(key), value);
  changed_ = true;
  gathering_->SetEnabled(true);
  return std::string(value);
}

std::optional<std::string> SettingsStore::Flush() {
  gathering_->SetEnabled(false);
  retry_->SetEnabled(false);
  if (!changed_) return std::nullopt;
  if (const auto error = file_.Write(table_)) {
    const std::string failure =
        "The settings could not be stored in " + file_.Path().string() + ": " + error.message() + ".";
    report_(failure);
    return failure;
  }
  changed_ = told_ = false;
  return std::nullopt;
}

void SettingsStore::LoadOnce() {
  if (std::exchange(loaded_, true)) return;
  SettingsFile::Loaded loaded = file_.Load();
  table_ = std::move(loaded.table);
  if (!loaded.trouble.empty()) tell_(loaded.trouble);
}

void SettingsStore::WriteGathered() {
  const auto failure = Flush();
  if (!failure) return;
  retry_->SetEnabled(true);
  if (!std::exchange(told_, true)) tell_(*failure + "\nPallomir goes on trying.");
}

}  // namespace pallomir
