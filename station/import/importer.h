#pragma once

#include <filesystem>
#include <string>

#include "base/civil_time.h"
#include "station/options.h"

namespace pallomir::station {

/// What an import says: its report, or (with an exit code that is not kDone) what went wrong.
struct ImportOutcome {
  ExitCode exitCode = kDone;
  std::string text;
};

/// Takes all files as recordings of one unit. `today` is the midnight of the computer's local date. All files
/// are read before anything is written; one that can't be used ends the import with nothing changed.
ImportOutcome Import(const ImportCommand& command, const std::filesystem::path& dataFolder, Millis today);

}  // namespace pallomir::station
