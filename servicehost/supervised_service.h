#pragma once

#include "servicehost/service_manager.h"

namespace pallomir::servicehost {

/// The station below a supervisor of our own, where there is no systemd. It does not outlast the computer's
/// next restart.
class SupervisedService : public ServiceManager {
 public:
  /// Whether its supervisor runs, or a station that has lost it.
  static bool IsRunning();

  bool Register(Installation& installation, Transcript& transcript) override;
  bool Start(const Installation& installation, const station::Options& options,
             Transcript& transcript) override;
  bool Stop(Transcript& transcript) override;
  bool Unregister(Transcript& transcript) override;
};

}  // namespace pallomir::servicehost
