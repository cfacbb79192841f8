#include "map/tile_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace pallomir {
namespace {

struct Pixel {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

using Shape = std::vector<Pixel>;

// A quarter of a ring and its turns by 90, 180 and 270 degrees.
template <std::size_t kSize>
Shape FullRing(const std::array<Pixel, kSize>& quarter) {
  Shape shape;
  for (int turn = 0; turn < 4; ++turn) {
    for (Pixel p : quarter) {
      for (int i = 0; i < turn; ++i) p = {-p.y, p.x};
      shape.push_back(p);
    }
  }
  return shape;
}

const Shape& RingReceived() {
  static const Shape shape = FullRing<11>(
      {{{8, 0}, {8, 1}, {8, 2}, {8, 3}, {7, 4}, {6, 5}, {5, 6}, {4, 7}, {3, 8}, {2, 8}, {1, 8}}});
  return shape;
}

const Shape& RingNotReceived() {
  static const Shape shape =
      FullRing<10>({{{7, 0}, {7, 1}, {7, 2}, {7, 3}, {6, 4}, {5, 5}, {4, 6}, {3, 7}, {2, 7}, {1, 7}}});
  return shape;
}

const Shape& RingEnds() {
  static const Shape shape = FullRing<19>({{{6, 0},
                                            {6, 1},
                                            {6, 2},
                                            {6, 3},
                                            {5, 4},
                                            {4, 5},
                                            {3, 6},
                                            {2, 6},
                                            {1, 6},
                                            {5, 0},
                                            {5, 1},
                                            {5, 2},
                                            {5, 3},
                                            {4, 4},
                                            {3, 5},
                                            {2, 5},
                                            {1, 5},
                                            {4, 3},
                                            {3, 4}}});
  return shape;
}

// Row 0 is the centre pixel, row 1 the two beside it; the column is the phase along the line.
constexpr std::uint8_t kLinePattern[2][4] = {{kWhite, kWhite, kBlack, kBlack},
                                             {kBlack, kWhite, kWhite, kBlack}};

std::int64_t RoundedQuotient(std::int64_t product, std::int64_t divisor) {
  return static_cast<std::int64_t>(
      std::nearbyint(static_cast<double>(product) / static_cast<double>(divisor)));
}

class Painter {
 public:
  Painter(const TrackDrawing& drawing, int generation)
      : drawing_(drawing),
        picture_{TrackMarks(generation, drawing.TileZoom), {}},
        centre_(PixelOf(drawing.CentreX, drawing.CentreY)) {}

  TrackPicture Paint() && {
    for (std::size_t unit = 0; unit < drawing_.units.size(); ++unit) PaintTrack(unit);
    if (drawing_.ringReceived) StampAll(received_, RingReceived(), kBlue);
    if (drawing_.ringNotReceived) StampAll(notReceived_, RingNotReceived(), kRed);
    for (const auto& points : drawing_.units) PaintEnd(points, true);
    for (const auto& points : drawing_.units) PaintEnd(points, false);
    return std::move(picture_);
  }

 private:
  Pixel PixelOf(std::int32_t x, std::int32_t y) const {
    return {x / drawing_.UnitsPerPixel, y / drawing_.UnitsPerPixel};
  }

  bool IsVisible(Pixel p) const {
    return std::abs(static_cast<std::int64_t>(p.x) - centre_.x) < drawing_.browser.width + kTileSize &&
           std::abs(static_cast<std::int64_t>(p.y) - centre_.y) < drawing_.browser.height + kTileSize;
  }

  void Mark(std::int64_t x, std::int64_t y, std::uint8_t colour) {
    picture_.marks.MarkPixel(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), colour);
  }

  void PaintTrack(std::size_t unit) {
    const auto points = drawing_.units[unit];
    if (points.empty()) return;
    Pixel previous = PixelOf(points[0].x, points[0].y);
    for (std::size_t j = 0; j < points.size(); ++j) {
      const Pixel pixel = PixelOf(points[j].x, points[j].y);
      if (IsVisible(pixel)) {
        NotePoint(pixel, points[j], j + 1, unit + 1);
        PaintCross(pixel);
        if (IsVisible(previous)) PaintSegment(previous, pixel);
      }
      previous = pixel;
    }
  }

  void NotePoint(Pixel pixel, const DataPoint& point, std::size_t index, std::size_t unit) {
    if (drawing_.ringReceived && (point.status & kStatusReceived)) received_.push_back(pixel);
    if (drawing_.ringNotReceived && (point.status & kStatusNotReceived)) notReceived_.push_back(pixel);
    picture_.fastest.Offer({index, point.status & kStatusSpeedMask, unit});
  }

  void PaintCross(Pixel p) {
    const std::int64_t x = p.x;
    const std::int64_t y = p.y;
    Mark(x, y, kRed);
    for (const int d : {-2, -1, 1, 2}) Mark(x + d, y, kRed);
    for (const int d : {-2, -1, 1, 2}) Mark(x, y + d, kRed);
  }

  // Three pixels wide, from the current point back to the previous one, both ends left out so that their
  // crosses stay whole. One step per pixel of the longer axis.
  void PaintSegment(Pixel p0, Pixel p1) {
    const std::int64_t dx = static_cast<std::int64_t>(p0.x) - p1.x;
    const std::int64_t dy = static_cast<std::int64_t>(p0.y) - p1.y;
    if (std::abs(dx) <= std::abs(dy)) {
      const int s = p0.y > p1.y ? 1 : -1;
      for (std::int64_t y = p1.y + s; y * s < static_cast<std::int64_t>(p0.y) * s; y += s) {
        const std::int64_t x = p1.x + RoundedQuotient(dx * (y - p1.y), dy);
        MarkAcross(x, y, 1, 0, Phase(y * s));
      }
    } else {
      const int s = p0.x > p1.x ? 1 : -1;
      for (std::int64_t x = p1.x + s; x * s < static_cast<std::int64_t>(p0.x) * s; x += s) {
        const std::int64_t y = p1.y + RoundedQuotient(dy * (x - p1.x), dx);
        MarkAcross(x, y, 0, 1, Phase(x * s));
      }
    }
  }

  static std::size_t Phase(std::int64_t along) { return static_cast<std::size_t>((along + 3) & 3); }

  void MarkAcross(std::int64_t x, std::int64_t y, int sideX, int sideY, std::size_t phase) {
    Mark(x, y, kLinePattern[0][phase]);
    Mark(x + sideX, y + sideY, kLinePattern[1][phase]);
    Mark(x - sideX, y - sideY, kLinePattern[1][phase]);
  }

  void Stamp(Pixel at, const Shape& shape, std::uint8_t colour) {
    for (const Pixel& d : shape)
      Mark(static_cast<std::int64_t>(at.x) + d.x, static_cast<std::int64_t>(at.y) + d.y, colour);
  }

  void StampAll(const std::vector<Pixel>& places, const Shape& shape, std::uint8_t colour) {
    for (const Pixel& place : places) Stamp(place, shape, colour);
  }

  // A unit with a single point gets the first point's green in both passes.
  void PaintEnd(std::span<const DataPoint> points, bool first) {
    if (points.empty()) return;
    const DataPoint& point = first ? points.front() : points.back();
    const Pixel pixel = PixelOf(point.x, point.y);
    if (IsVisible(pixel)) Stamp(pixel, RingEnds(), first || points.size() == 1 ? kGreen : kMagenta);
  }

  const TrackDrawing& drawing_;
  TrackPicture picture_;
  Pixel centre_;
  std::vector<Pixel> received_;
  std::vector<Pixel> notReceived_;
};

}  // namespace

void FastestPoints::Offer(const FastPoint& point) {
  if (entries_.back().speed > point.speed) return;
  const auto slower = std::find_if(entries_.begin(), entries_.end(),
                                   [&point](const FastPoint& entry) { return entry.speed < point.speed; });
  entries_.insert(slower, point);
  if (entries_.size() > kMaxEntries) entries_.resize(kMaxEntries);
}

TrackPicture DrawTracks(const TrackDrawing& drawing, int generation) {
  return Painter(drawing, generation).Paint();
}

}  // namespace pallomir
