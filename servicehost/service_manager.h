#pragma once

#include "servicehost/installation.h"
#include "servicehost/transcript.h"
#include "station/options.h"

namespace pallomir::servicehost {

/// How the service is called, by the system and by those who command it.
inline constexpr char kServiceName[] = "Pallomir_Service";

/// What keeps the station running. Each function tells the user what it did, and returns false when it could
/// not do it. All of them may be called in any state.
class ServiceManager {
 public:
  virtual ~ServiceManager() = default;

  /// Makes the service known, without starting it. Notes in `installation` what was granted.
  virtual bool Register(Installation& installation, Transcript& transcript) = 0;
  /// Returns when the station answers at its ports. After a failure nothing runs.
  virtual bool Start(const Installation& installation, const station::Options& options,
                     Transcript& transcript) = 0;
  virtual bool Stop(Transcript& transcript) = 0;
  /// Stops the service and makes it unknown.
  virtual bool Unregister(Transcript& transcript) = 0;
};

/// Tells that the service runs already; false when it runs, but does not answer.
bool ReportRunning(const station::Options& options, Transcript& transcript);

}  // namespace pallomir::servicehost
