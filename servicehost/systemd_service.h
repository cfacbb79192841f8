#pragma once

#include <filesystem>

#include "servicehost/run_program.h"
#include "servicehost/service_manager.h"

namespace pallomir::servicehost {

/// The station as a user service of systemd, which starts with the computer when lingering is granted.
class SystemdService : public ServiceManager {
 public:
  /// Whether the user's systemd can be talked to.
  static bool Answers(Transcript& transcript);
  /// Where the unit lies when the service is registered.
  static std::filesystem::path UnitFile();

  bool Register(Installation& installation, Transcript& transcript) override;
  bool Start(const Installation& installation, const station::Options& options,
             Transcript& transcript) override;
  bool Stop(Transcript& transcript) override;
  bool Unregister(Transcript& transcript) override;
};

}  // namespace pallomir::servicehost
