#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "station/import/recording.h"

namespace pallomir::station {

/// Adds the track points of a GPX text, version 1.0 or 1.1, to `recording`, until that has `maxPoints`. Their
/// segment numbers continue those that are there. Speed and course are taken from the point or from its
/// extensions, whatever their prefix. Parts may have any size; besides the points it takes a few megabytes,
/// however long the text is. Returns why the text can't be taken ("is no GPX: ..."), or an empty text; the
/// points before the fault have then been added.
std::string ReadGpx(const NextPart& nextPart, Recording& recording, std::size_t maxPoints);

/// Reads "2026-11-22T15:04:05Z", also with a fraction (cut to milliseconds) or an offset like "+02:00". UTC
/// where the text says neither. Nothing for anything else.
std::optional<Millis> ParseGpxTime(std::string_view text);

}  // namespace pallomir::station
