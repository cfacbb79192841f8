#pragma once

#include <chrono>
#include <filesystem>

#include "station/web/web_workers.h"

namespace pallomir::station {

/// Longer searches over HTTP are ended.
inline constexpr std::chrono::seconds kLongestVisitSearch{60};

/// Answers what ParseVisitsQuery reads from the store at `data`:
///
///     {"visits":[{"unit":"00000000000A","entry":"2026-11-22T15:04:05Z","exit":"2026-11-22T15:09:05Z","records":12}],
///     "records":123,"files":4,"problem":""}
///
/// Newest exit first. `problem` says what ended the search before its time, in lines; the visits are those
/// found before. A query that can't be read gets status 400 with a sentence.
WebService VisitsService(std::filesystem::path data, std::chrono::milliseconds longest = kLongestVisitSearch);

}  // namespace pallomir::station
