#pragma once

#include <optional>
#include <system_error>

#include "servicehost/process_handle.h"

namespace pallomir::servicehost {

/// The two processes of a supervised service, as PidFile() tells them. They may be gone.
struct ServiceProcesses {
  std::optional<ProcessIdentity> supervisor;
  std::optional<ProcessIdentity> station;
};

ServiceProcesses ReadProcesses();
std::error_code WriteProcesses(const ServiceProcesses& processes);
void RemovePidFile();

/// The process, when it still runs.
std::optional<ProcessHandle> Running(const std::optional<ProcessIdentity>& identity);

}  // namespace pallomir::servicehost
