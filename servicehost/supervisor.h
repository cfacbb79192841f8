#pragma once

#include <chrono>

#include "servicehost/installation.h"

namespace pallomir::servicehost {

/// The argument that makes this program the supervisor.
inline constexpr char kSupervise[] = "--supervise";

/// How long the station may take to end by itself when it is told to.
inline constexpr std::chrono::seconds kStationPatience{8};

/// What the supervisor writes to its standard output when the station is up. Anything else says why it isn't.
inline constexpr char kReadyReport[] = "ready\n";

/// Runs the station until TERM comes: restarts it when it fails, keeps PidFile() and StationLogFile(). A
/// first start that fails is reported and not tried again. Returns the exit code.
int Supervise(const Installation& installation);

}  // namespace pallomir::servicehost
