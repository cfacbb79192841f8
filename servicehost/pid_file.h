#pragma once

#include <optional>
#include <system_error>

#include "servicehost/process_handle.h"

namespace pallomir::servicehost {

/// The two processes of a supervised service, as PidFile() tells them; where it tells of no supervisor that
/// runs, the one that holds SupervisorLockFile(). They may be gone.
struct ServiceProcesses {
  std::optional<ProcessIdentity> supervisor;
  std::optional<ProcessIdentity> station;
};

/// Not to be called by the supervisor itself.
ServiceProcesses ReadProcesses();
std::error_code WriteProcesses(const ServiceProcesses& processes);
void RemovePidFile();

/// The process, when it still runs.
std::optional<ProcessHandle> Running(const std::optional<ProcessIdentity>& identity);

}  // namespace pallomir::servicehost
