#include "servicehost/pid_file.h"

#include "servicehost/installation.h"
#include "servicehost/record_file.h"
#include "servicehost/supervisor_lock.h"

namespace pallomir::servicehost {

ServiceProcesses ReadProcesses() {
  Record record = ReadRecord(PidFile());
  ServiceProcesses processes{ParseIdentity(record["Supervisor"]), ParseIdentity(record["Station"])};
  if (!Running(processes.supervisor))
    if (const auto holder = SupervisorLock::Holder(SupervisorLockFile())) processes.supervisor = holder;
  return processes;
}

std::error_code WriteProcesses(const ServiceProcesses& processes) {
  Record record;
  if (processes.supervisor) record["Supervisor"] = ToText(*processes.supervisor);
  if (processes.station) record["Station"] = ToText(*processes.station);
  return WriteRecord(PidFile(), record);
}

void RemovePidFile() {
  std::error_code ignored;
  std::filesystem::remove(PidFile(), ignored);
}

std::optional<ProcessHandle> Running(const std::optional<ProcessIdentity>& identity) {
  return identity ? ProcessHandle::Open(*identity) : std::nullopt;
}

}  // namespace pallomir::servicehost
