#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/event_loop.h"
#include "platform/settings.h"
#include "settings/settings_file.h"

namespace pallomir {

/// Every setting belongs to this application and section.
inline constexpr std::string_view kSettingsApplication = "pallomir browser";
inline constexpr std::string_view kSettingsSection = "Startup";

/// The settings of this run, read from their file on first use. What is saved in one go is written in one go:
/// by Flush, or when the event loop is next free. A write that failed is tried again until it succeeds.
class SettingsStore : public Settings {
 public:
  static constexpr int kRetryMilliseconds = 10'000;

  /// Gets lines for the trace, and sentences for the user.
  using Listener = std::function<void(const std::string&)>;
  SettingsStore(const std::filesystem::path& commonDataFolder, EventLoop& loop, Listener report,
                Listener tell);

  std::string Get(std::string_view key, std::string_view defaultValue) override;
  std::string Save(std::string_view key, std::string_view value) override;
  std::optional<std::string> Flush() override;

 private:
  void LoadOnce();
  void WriteGathered();

  SettingsFile file_;
  Listener report_;
  Listener tell_;
  SettingsTable table_;
  bool loaded_ = false;
  bool changed_ = false;  // since the last write
  bool told_ = false;     // of a write that has not succeeded since
  std::unique_ptr<Timer> gathering_;
  std::unique_ptr<Timer> retry_;
};

}  // namespace pallomir
