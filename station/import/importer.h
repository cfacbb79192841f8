#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/civil_time.h"

namespace pallomir::station {

class UnitStore;

/// What is to be imported.
struct ImportCommand {
  std::string unitId;
  std::optional<std::string> description;  ///< without one: what the unit has, or else the first file's name
  bool toToday = false;                    ///< move by whole days, so that the last day (UTC) is today
  std::vector<std::string> files;          ///< at least one
};

/// What an import has to say: its report, or what went wrong. Whole lines.
struct ImportOutcome {
  bool isDone = false;
  std::string text;
};

/// Takes all files as recordings of one unit. `today` is midnight of the local date. All files are read
/// before anything is stored: one that can't be used ends the import with nothing changed.
ImportOutcome Import(const ImportCommand& command, UnitStore& store, Millis today);

}  // namespace pallomir::station
