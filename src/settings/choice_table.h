#pragma once

#include "settings/choice.h"

namespace pallomir {

/// Every stored choice: its key, its type and range, and its value before anyone chose one. The keys enter
/// the settings file in the order in which the start-up reads them.
namespace choice {

// More than any desktop has is as good as no number. The initial values are the work area's.
inline constexpr int kMostPixels = 100'000;
inline constexpr ChoiceRow<int> kWindowLeft{"WindowPos_L", 0, 0, kMostPixels, {}, {}, true};
inline constexpr ChoiceRow<int> kWindowTop{"WindowPos_T", 0, 0, kMostPixels, {}, {}, true};
inline constexpr ChoiceRow<int> kWindowWidth{"WindowPos_W", 0, 0, kMostPixels, {}, {}, true};
inline constexpr ChoiceRow<int> kWindowHeight{"WindowPos_H", 0, 0, kMostPixels, {}, {}, true};
inline constexpr ChoiceRow<bool> kMaximised{"WindowState", true, "2", "0", true};

// Captions of the menu's entries are what is stored of these two.
inline constexpr ChoiceRow<bool> kLive{"Live", false};  ///< points are shown as they come

inline constexpr const char* kOnStartupTexts[] = {"Load Nothing", "Load Data Since Midnight",
                                                  "Load Data Since 3 AM", "Load Last 24 Hrs Data",
                                                  "Load Most Recent 1000 Data Points"};
inline constexpr const char* kOnUpdateTexts[] = {"Do &Nothing", "Auto &Fit",
                                                 "Auto &Center on Most Recent Point"};
inline constexpr ChoiceRow<int> kOnStartup{"LoadOnStartup", 2, 0, 4, {}, kOnStartupTexts};
inline constexpr ChoiceRow<int> kOnUpdate{"OnUpdate", 1, 0, 2, {}, kOnUpdateTexts};

inline constexpr ChoiceRow<std::string> kHotspotMode{"SSID_List_Mode", "Permitted"};  ///< or "Prohibited"

inline constexpr ChoiceRow<int> kProviderIndex{"Mobile Provider Index", 1, 1, 21,
                                               99};  ///< 99: the user's own
inline constexpr ChoiceRow<std::string> kProviderName{"Mobile Provider Name", "Your Mobile Provider's Name"};
inline constexpr ChoiceRow<std::string> kProviderUrl{"Mobile Provider URL", "Your Mobile Provider's URL"};
inline constexpr ChoiceRow<std::string> kCustomProviderName{"Custom Mobile Provider Name", ""};
inline constexpr ChoiceRow<std::string> kCustomProviderUrl{"Custom Mobile Provider URL", ""};
inline constexpr ChoiceRow<bool> kReportNow{"ReportNOW", false};
inline constexpr ChoiceRow<std::string> kPhoneNumber{"Mobile Phone Number", "1235551212"};
inline constexpr ChoiceRow<std::string> kEmailAddress{"Email Address", "you@example.com"};
inline constexpr const char* kAlertMethodTexts[] = {"", "Email", "Text Message"};
inline constexpr ChoiceRow<int> kAlertMethod{"Alert Method", 0, 0, 2, {}, kAlertMethodTexts};
inline constexpr ChoiceRow<std::string> kAlertAddress{"Email/Text Address", ""};  ///< for whoever sends
inline constexpr ChoiceRow<int> kAlertStaleIndex{"Alert Stale Index", 2, 1, 5};
inline constexpr ChoiceRow<int> kUnitOfMeasure{"Unit Of Measure", 0, 0, 1};  ///< 0 miles, 1 kilometers
inline constexpr ChoiceRow<int> kPortBase{"PortBase", 18801, 0, 65535};
inline constexpr ChoiceRow<int> kAlertSound{"AlertSound", 4, 1, 7};
inline constexpr ChoiceRow<int> kAlertEnabled{"AlertEnabled", 1, 0, 2};  ///< disabled, once, persistent
inline constexpr ChoiceRow<bool> kZoneAlertsOnly{"Zone Alerts Only", false};
inline constexpr ChoiceRow<std::string> kMuteUntil{"Mute Until", ""};  ///< or "Switched On", or a time as UTC
inline constexpr ChoiceRow<bool> kDemoMode{"Demo Mode", true};

inline constexpr ChoiceRow<std::string> kJournalPlace{"Journal Window", ""};  ///< left,top,width,height
inline constexpr ChoiceRow<bool> kJournalNotifies{"Journal Notifications", true};
/// Within both a unit that wavers over a zone's border has crossed it once.
inline constexpr ChoiceRow<int> kFlickerSeconds{"Zone Flicker Seconds", 30, 0, 3600};
inline constexpr ChoiceRow<int> kFlickerMeters{"Zone Flicker Meters", 30, 0, 10'000};

// Lists, in the form that their rooms give them.
inline constexpr ChoiceRow<std::string> kMobileUnits{"Mobile Units", ""};
inline constexpr ChoiceRow<std::string> kHotspots{"SSIDs", "07default08wireless07linksys07netgear"};
inline constexpr ChoiceRow<std::string> kSecureHotspots{"SecureSSIDs", ""};

}  // namespace choice
}  // namespace pallomir
