#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "station/common/geo.h"
#include "station/store/unit_store.h"

namespace pallomir::station {

/// Between these degrees.
struct DegreeBox {
  double minLat = 0, maxLat = 0, minLng = 0, maxLng = 0;
};

/// When were units where? One of `at`, `box` and `zone` is given.
struct VisitsCommand {
  std::optional<Place> at;       ///< the middle of a rectangle
  int zoom = 13;                 ///< of the map; gives the rectangle its size
  std::optional<double> radius;  ///< metres from its middle to its edges, instead
  std::optional<DegreeBox> box;
  std::string zone;                   ///< a zone's dotted number
  std::filesystem::path zones;        ///< the file of the zones
  std::vector<std::string> unitIds;   ///< none: all that are stored
  std::optional<Millis> from, until;  ///< UTC, both included
  std::size_t limit = kMostVisits;
  bool asJson = false;
};

/// What a search has to say.
struct VisitsOutcome {
  bool isDone = false;        ///< it ran to its end
  std::string list;           ///< the visits found, newest exit first; of a search that failed, those before
  std::string complaint;      ///< why it did not; whole lines
  std::uint64_t records = 0;  ///< examined, or known to lie elsewhere
  std::size_t files = 0;      ///< done
};

/// Asked every 20,000 records or so. What it says ends the search as its complaint.
using EndOfSearch = std::function<std::string()>;

VisitsOutcome FindVisits(const VisitsCommand& command, UnitStore& store, const EndOfSearch& end = {});

/// "2026-11-22T15:04:05Z", or with an offset; a day alone is its first second or, for an end, its last.
std::optional<Millis> ParseMoment(const std::string& text, bool isEnd);

inline constexpr int kNearestZoom = 22;
inline constexpr double kShortestRadius = 0.1, kLongestRadius = 1'000'000;  // metres

/// The visits as lines of CSV under a headline: "unit,entry,exit,records". Units by their IDs, times in UTC
/// as "2026-11-22T15:04:05Z".
std::string VisitsAsCsv(std::span<const Visit> visits, std::span<const std::string> unitIds);

/// The same as an array of objects with these names.
std::string VisitsAsJson(std::span<const Visit> visits, std::span<const std::string> unitIds);

}  // namespace pallomir::station
