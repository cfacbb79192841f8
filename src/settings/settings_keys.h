#pragma once

#include <string_view>

namespace pallomir {

/// A stored preference: its key and the value it has before anyone chose one.
struct SettingKey {
  std::string_view key;
  std::string_view defaultValue;
};

namespace setting {
inline constexpr SettingKey kWindowLeft{"WindowPos_L", ""};  ///< pixels; the defaults are the work area's
inline constexpr SettingKey kWindowTop{"WindowPos_T", ""};
inline constexpr SettingKey kWindowWidth{"WindowPos_W", ""};
inline constexpr SettingKey kWindowHeight{"WindowPos_H", ""};
inline constexpr SettingKey kWindowState{"WindowState", "2"};  ///< "2" maximised, else "0"
inline constexpr SettingKey kLoadOnStartup{"LoadOnStartup",
                                           "Load Data Since 3 AM"};        ///< caption of the choice
inline constexpr SettingKey kOnUpdate{"OnUpdate", "Auto &Fit"};            ///< caption of the choice
inline constexpr SettingKey kHotspotMode{"SSID_List_Mode", "Permitted"};   ///< or "Prohibited"
inline constexpr SettingKey kProviderIndex{"Mobile Provider Index", "1"};  ///< 99: the user's own provider
inline constexpr SettingKey kProviderName{"Mobile Provider Name", "Your Mobile Provider's Name"};
inline constexpr SettingKey kProviderUrl{"Mobile Provider URL", "Your Mobile Provider's URL"};
inline constexpr SettingKey kCustomProviderName{"Custom Mobile Provider Name", ""};
inline constexpr SettingKey kCustomProviderUrl{"Custom Mobile Provider URL", ""};
inline constexpr SettingKey kReportNow{"ReportNOW", "False"};
inline constexpr SettingKey kPhoneNumber{"Mobile Phone Number", "1235551212"};
inline constexpr SettingKey kEmailAddress{"Email Address", "you@example.com"};
inline constexpr SettingKey kAlertMethod{"Alert Method", ""};  ///< "Email" or "Text Message"
inline constexpr SettingKey kAlertStaleIndex{"Alert Stale Index", "2"};
inline constexpr SettingKey kUnitOfMeasure{"Unit Of Measure", "0"};  ///< 0 miles, 1 kilometers
inline constexpr SettingKey kPortBase{"PortBase", "18801"};
inline constexpr SettingKey kAlertSound{"AlertSound", "4"};
inline constexpr SettingKey kAlertEnabled{"AlertEnabled", "1"};  ///< 0 disabled, 1 once, 2 persistent
inline constexpr SettingKey kDemoMode{"Demo Mode", "True"};
inline constexpr SettingKey kMobileUnits{"Mobile Units", ""};  ///< see tracking/mobile_units.h
inline constexpr SettingKey kHotspots{"SSIDs", "07default08wireless07linksys07netgear"};
inline constexpr SettingKey kSecureHotspots{"SecureSSIDs", ""};
}  // namespace setting

/// The one key of the per-user registry: the main window's number in decimal.
inline constexpr SettingKey kWindowHandleKey{"Main Window Handle", "0"};

}  // namespace pallomir
