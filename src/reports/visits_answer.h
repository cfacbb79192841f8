#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "reports/record_time.h"

namespace pallomir {

/// A visit as the station's web site tells it. Times are packed, UTC.
struct ToldVisit {
  std::string unitId;
  std::uint32_t entry = 0;
  std::uint32_t exit = 0;
  std::uint32_t records = 0;
};

struct VisitsAnswer {
  std::vector<ToldVisit> visits;  ///< at most kMostVisits, newest exit first as they were told
  std::uint64_t records = 0;      ///< that were searched
  std::uint64_t files = 0;
  std::string problem;  ///< what ended the search before its time; at most a few lines
};

/// Reads the JSON that "/visits" answers with: {"visits":[{"unit","entry","exit","records"},…],"records",
/// "files","problem"}, times as "2026-11-22T15:04:05Z" within the years 2000 to 2031. Otherwise a sentence
/// that says what is wrong with it. What else it holds is passed over.
std::variant<VisitsAnswer, std::string> ParseVisitsAnswer(std::string_view json);

/// What "/visits" is asked for.
struct VisitsQuestion {
  double lat = 0;  ///< degrees
  double lng = 0;
  int zoom = 0;
  std::vector<std::string> unitIds;  ///< none: all that the station has
  TimeSpan span;
  std::size_t limit = 0;
};

/// The path on the web site, with its query.
std::string VisitsPath(const VisitsQuestion& question);

}  // namespace pallomir
