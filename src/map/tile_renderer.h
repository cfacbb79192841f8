#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/data_point.h"
#include "map/track_marks.h"
#include "platform/geometry.h"

namespace pallomir {

/// What the renderer draws. Points of one unit ascend in time; units stand in the order of their rows.
struct TrackDrawing {
  std::vector<std::span<const DataPoint>> units;
  std::int32_t CentreX = 0;
  std::int32_t CentreY = 0;
  std::int32_t UnitsPerPixel = 1;  ///< 1, 2, 4 … 2^22
  int TileZoom = 0;
  PixelSize browser;  ///< the band that is drawn reaches one browser size and 256 pixels from the centre
  bool ringReceived = false;     ///< ring the points sent and received
  bool ringNotReceived = false;  ///< ring the points sent and not received
};

/// An entry of the fastest points.
struct FastPoint {
  std::size_t index = 0;    ///< the point's number within its unit, from 1
  std::uint32_t speed = 0;  ///< low nine bits of the status word
  std::size_t unit = 0;     ///< the unit's row, from 1; 0 for the two sentinels
  std::uint32_t time = 0;   ///< packed, without flag: names the point also when others have come before it
  bool operator==(const FastPoint&) const = default;
};

/// The fastest points of one drawing, fastest first. Two sentinels (speed 512 and speed 0) spare the search
/// its ends; at most 22 entries, of equal speeds the earlier found stay ahead.
class FastestPoints {
 public:
  void Offer(const FastPoint& point);
  /// The speed below which an offer changes nothing.
  std::uint32_t Slowest() const {
    // Of equal speed it would be the entry too many.
    return entries_.back().speed + (entries_.size() < kMaxEntries ? 0 : 1);
  }
  const std::vector<FastPoint>& Entries() const { return entries_; }

 private:
  static constexpr std::size_t kMaxEntries = 22;
  std::vector<FastPoint> entries_{{0, 512, 0}, {0, 0, 0}};
};

struct TrackPicture {
  TrackMarks marks;
  FastestPoints fastest;
};

/// Draws crosses, segments, rings and end markers, in this order, so that end markers lie on top. The work
/// can be done in parts, with other things done in between.
/// The plane has at most (2 * width + 1101) * (2 * height + 1037) bytes of the browser's size: 16 MB for 1920
/// x 1080, 159 MB for 7680 x 4320.
class TrackPainter {
 public:
  /// The drawing's points are read until the picture is complete, the drawing itself only here.
  explicit TrackPainter(TrackDrawing drawing);
  ~TrackPainter();

  /// Does the work of so many points or rings, long segments counting as several. False when nothing is left
  /// to do.
  bool Paint(std::size_t count);

  /// The picture, once it is complete.
  TrackPicture Take();

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

/// All of it in one go.
TrackPicture DrawTracks(const TrackDrawing& drawing);

}  // namespace pallomir
