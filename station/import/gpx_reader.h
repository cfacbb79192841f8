#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "station/common/geo.h"

namespace pallomir::station {

/// One point of a recording.
struct TrackPoint {
  Millis utc = 0;
  Place place;
  std::optional<double> speed;   ///< metres a second, not negative
  std::optional<double> course;  ///< compass degrees
  int segment = 0;               ///< points of one unbroken stretch share a number
};

/// Points that a recording has and that can't be taken, by what is wrong with them.
struct LeftOut {
  std::size_t withoutTime = 0;
  std::size_t unreadableTime = 0;
  std::size_t impossiblePosition = 0;
  std::size_t yearOutOfRange = 0;  ///< outside 2000 to 2031
  std::size_t sameSecond = 0;      ///< as another point, which is taken
  std::size_t Total() const {
    return withoutTime + unreadableTime + impossiblePosition + yearOutOfRange + sameSecond;
  }
};

struct GpxTrack {
  std::vector<TrackPoint> points;  ///< in the order of the files
  LeftOut leftOut;
};

/// What one import can hold in memory: 46 days of a point a second.
inline constexpr std::size_t kMaxTrackPoints = 4'000'000;

/// Adds the track points of a GPX text of either version to `track`, with segment numbers of their own. Speed
/// and course are taken from the point or from its extensions, whatever prefix they have. The text comes in
/// parts of any size, an empty one at its end; beyond the points it takes a few megabytes however long it is.
/// Why the text can't be taken, or nothing.
std::string ReadGpx(const std::function<std::string_view()>& nextPart, GpxTrack& track,
                    std::size_t maxPoints = kMaxTrackPoints);

/// "2026-11-22T15:04:05Z", also with a fraction or with an offset like "+02:00"; UTC where nothing is said.
std::optional<Millis> ParseGpxTime(std::string_view text);

}  // namespace pallomir::station
