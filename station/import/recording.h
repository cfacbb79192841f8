#pragma once

#include <cstddef>
#include <functional>
#include <optional>
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
  std::optional<double> course;  ///< compass degrees, 0 to 360
  int segment = 0;               ///< points of one unbroken stretch share a number
};

/// How many points of a recording were left out, by what is wrong with them.
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

/// What has been read from one or more files, whatever their form.
struct Recording {
  std::vector<TrackPoint> points;  ///< in the order of the files
  LeftOut leftOut;
};

/// Gives a file's content part by part, then an empty part. A part is valid until the next call.
using NextPart = std::function<std::string_view()>;

/// The most points that one import holds in memory: 46 days of a point a second.
inline constexpr std::size_t kMaxTrackPoints = 4'000'000;

}  // namespace pallomir::station
