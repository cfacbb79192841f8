#pragma once

#include <chrono>
#include <string>

#include "station/options.h"

namespace pallomir::servicehost {

/// "locator 127.0.0.1:2435 (UDP), Base Server 127.0.0.1:18799 and 18800"
std::string PortsText(const station::Options& options);
/// "http://127.0.0.1:2480/fullscreen/index.php", as this computer reaches it.
std::string MapPageText(const station::Options& options);

/// Names a port of the station that can't be opened and why; empty when all are free.
std::string FindTakenPort(const station::Options& options);

/// Names a port of the station that somebody has opened; empty when there is none.
std::string FindUsedPort(const station::Options& options);

/// Asks the locator and the web site until both have answered; false when they did not within `limit`.
bool AwaitAnswers(const station::Options& options, std::chrono::milliseconds limit);

}  // namespace pallomir::servicehost
