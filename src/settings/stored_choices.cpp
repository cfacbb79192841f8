#include "settings/stored_choices.h"

#include <optional>

#include "base/number_format.h"
#include "settings/settings_keys.h"

namespace pallomir {
namespace {

class Reader {
 public:
  Reader(Settings& settings, const std::function<void(const std::string&)>& complain)
      : settings_(settings), complain_(complain) {}

  std::string Text(const SettingKey& key) { return settings_.Get(key.key, key.defaultValue); }

  bool Flag(const SettingKey& key) {
    const std::string text = Text(key);
    if (text == "True" || text == "False") return text == "True";
    Complain(key, text);
    return key.defaultValue == "True";
  }

  // `extra` is one more value that is legal.
  int Number(const SettingKey& key, int least, int most, std::optional<int> extra = {}) {
    const std::string text = Text(key);
    const auto number = ParseInteger(text);
    if (number && ((*number >= least && *number <= most) || (extra && *number == *extra)))
      return static_cast<int>(*number);
    Complain(key, text);
    return static_cast<int>(ParseInteger(key.defaultValue).value_or(least));
  }

 private:
  void Complain(const SettingKey& key, const std::string& text) {
    complain_("setting \"" + std::string(key.key) + "\" has no use for \"" + text + "\": taken as \"" +
              std::string(key.defaultValue) + "\"");
  }

  Settings& settings_;
  const std::function<void(const std::string&)>& complain_;
};

}  // namespace

StoredChoices ReadStoredChoices(Settings& settings, const std::function<void(const std::string&)>& complain,
                                const std::function<void()>& illegalAlertMethod) {
  Reader read(settings, complain);
  StoredChoices choices;
  choices.hotspotMode = read.Text(setting::kHotspotMode);
  choices.providerIndex = read.Number(setting::kProviderIndex, 1, 21, 99);
  choices.providerName = read.Text(setting::kProviderName);
  choices.providerUrl = read.Text(setting::kProviderUrl);
  choices.customProviderName = read.Text(setting::kCustomProviderName);
  choices.customProviderUrl = read.Text(setting::kCustomProviderUrl);
  choices.reportNow = read.Flag(setting::kReportNow);
  choices.phoneNumber = read.Text(setting::kPhoneNumber);
  choices.emailAddress = read.Text(setting::kEmailAddress);
  choices.alertMethod = read.Text(setting::kAlertMethod);
  if (!choices.alertMethod.empty() && choices.alertMethod != "Email" &&
      choices.alertMethod != "Text Message") {
    illegalAlertMethod();
    choices.alertMethod.clear();
  }
  choices.alertStaleIndex = read.Number(setting::kAlertStaleIndex, 1, 5);
  choices.unitOfMeasure = read.Number(setting::kUnitOfMeasure, 0, 1);
  choices.portBase = read.Number(setting::kPortBase, 0, 65535);
  choices.alertSound = read.Number(setting::kAlertSound, 1, 7);
  choices.alertEnabled = read.Number(setting::kAlertEnabled, 0, 2);
  choices.demoMode = read.Flag(setting::kDemoMode);
  return choices;
}

}  // namespace pallomir
