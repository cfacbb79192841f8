#pragma once

#include <string>

#include "settings/choice.h"

namespace pallomir {

/// Where the normal window lies, in pixels, and whether it starts maximised.
struct WindowChoices {
  Choice<int> left;
  Choice<int> top;
  Choice<int> width;
  Choice<int> height;
  Choice<bool> maximised;
};

/// The Wi-Fi lists of the mobile units, and whether the first one permits or prohibits.
struct HotspotChoices {
  Choice<std::string> mode;  ///< "Permitted" or "Prohibited"
  Choice<std::string> hotspots;
  Choice<std::string> secureHotspots;
};

/// The gateway for text messages.
struct ProviderChoices {
  Choice<int> index;
  Choice<std::string> name;
  Choice<std::string> url;
  Choice<std::string> customName;
  Choice<std::string> customUrl;
};

struct AlertChoices {
  Choice<bool> reportNow;
  Choice<std::string> phoneNumber;
  Choice<std::string> emailAddress;
  Choice<int> method;           ///< 0 none, 1 email, 2 text message
  Choice<std::string> address;  ///< written only
  Choice<int> staleIndex;
  Choice<int> sound;
  Choice<int> enabled;  ///< 0 disabled, 1 once, 2 persistent
  Choice<bool> zoneAlertsOnly;
  Choice<std::string> muteUntil;
};

struct JournalChoices {
  Choice<std::string> place;  ///< of its window
  Choice<bool> notifies;      ///< alerts, by the desktop
  Choice<int> flickerSeconds;
  Choice<int> flickerMeters;
};

/// All that the user chose and the settings file keeps. Each room gets its own by reference.
class StoredChoices {
 public:
  /// `complain` gets a line for the trace about each stored text that makes no sense; an alert method is what
  /// the user is told of, by `complainOfAlertMethod`.
  StoredChoices(Settings& settings, ChoiceComplaint complain, ChoiceComplaint complainOfAlertMethod);

  /// Reads all from the hotspot mode to the demo mode, in the order in which the file lists them; the others
  /// are read by their rooms.
  void Read();

 private:
  ChoiceComplaint complain_;  // before those that refer to it
  ChoiceComplaint complainOfAlertMethod_;

 public:
  WindowChoices window;
  Choice<int> onStartup;  ///< as StartupChoice counts
  Choice<int> onUpdate;   ///< 0 nothing, 1 fit, 2 centre
  Choice<std::string> units;
  HotspotChoices hotspots;
  ProviderChoices provider;
  AlertChoices alerts;
  JournalChoices journal;
  Choice<int> unitOfMeasure;  ///< 0 miles, 1 kilometers
  Choice<int> portBase;       ///< 0..65535
  Choice<bool> demoMode;
  Choice<bool> live;
};

}  // namespace pallomir
