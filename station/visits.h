#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "station/common/geo.h"
#include "station/store/unit_store.h"

namespace pallomir::station {

/// When were units where? Either `at` or `zone` is given.
struct VisitsCommand {
  std::optional<Place> at;            ///< the middle of a rectangle
  int zoom = 13;                      ///< of the map; gives the rectangle its size
  std::optional<double> radius;       ///< metres from its middle to its edges, instead
  std::string zone;                   ///< a zone's dotted number
  std::filesystem::path zones;        ///< the file of the zones
  std::vector<std::string> unitIds;   ///< none: all that are stored
  std::optional<Millis> from, until;  ///< UTC, both included
  std::size_t limit = kMostVisits;
  bool asJson = false;
};

/// What a search has to say.
struct VisitsOutcome {
  bool isDone = false;    ///< it ran to its end
  std::string list;       ///< the visits found, newest exit first; of a search that failed, those before
  std::string complaint;  ///< why it did not; whole lines
};

VisitsOutcome FindVisits(const VisitsCommand& command, UnitStore& store);

/// The visits as lines of CSV under a headline: "unit,entry,exit,records". Units by their IDs, times in UTC
/// as "2026-11-22T15:04:05Z".
std::string VisitsAsCsv(std::span<const Visit> visits, std::span<const std::string> unitIds);

/// The same as an array of objects with these names.
std::string VisitsAsJson(std::span<const Visit> visits, std::span<const std::string> unitIds);

}  // namespace pallomir::station
