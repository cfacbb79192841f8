#pragma once

#include <functional>
#include <string>

#include "platform/settings.h"

namespace pallomir {

/// The choices that are read at start-up and used by rooms that own their menus.
struct StoredChoices {
  std::string hotspotMode;  ///< "Permitted" or "Prohibited"
  int providerIndex = 1;    ///< 1..21, or 99 for the user's own
  std::string providerName;
  std::string providerUrl;
  std::string customProviderName;
  std::string customProviderUrl;
  bool reportNow = false;
  std::string phoneNumber;
  std::string emailAddress;
  std::string alertMethod;  ///< "", "Email" or "Text Message"
  int alertStaleIndex = 2;  ///< 1..5
  int unitOfMeasure = 0;    ///< 0 miles, 1 kilometers
  int portBase = 18801;     ///< 0..65535
  int alertSound = 4;       ///< 1..7
  int alertEnabled = 1;     ///< 0..2
  bool demoMode = true;
};

/// Reads the choices in their fixed order, so that the file lists them in it. A number that is none or out of
/// range is its default; each such value is described to `complain`. An alert method that is none is
/// described to `illegalAlertMethod` and counts as none.
StoredChoices ReadStoredChoices(Settings& settings, const std::function<void(const std::string&)>& complain,
                                const std::function<void()>& illegalAlertMethod);

}  // namespace pallomir
