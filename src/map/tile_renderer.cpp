#include "map/tile_renderer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstdlib>
#include <limits>
#include <utility>

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

// Colours of the four phases along a line, 16 bits a phase from the lowest: the centre pixel in the low byte,
// the two beside it in the high one. Shifted round by a phase for every step.
constexpr std::uint64_t kLinePattern = 0x0303'0203'0202'0302;
static_assert(kWhite == 2 && kBlack == 3);

// The line that joins (0, 0) and (`along`, `across`) leaves its axis by across * k / along at step k, rounded
// half to even. Both 0 or more, across <= along. One step at a time, with the remainder carried on.
class Deviation {
 public:
  constexpr Deviation(int along, int across) : along_(along), across_(across) {}

  constexpr int Next() {
    remainder_ += across_;
    if (remainder_ >= along_) {
      remainder_ -= along_;
      ++quotient_;
    }
    const bool up = std::int64_t{2} * remainder_ + (quotient_ & 1) > along_;
    return quotient_ + (up ? 1 : 0);
  }

 private:
  int along_;
  int across_;
  int quotient_ = 0;
  int remainder_ = 0;
};

// Points follow each other closely, so that most segments are short: their deviations are looked up, by
// [along][across][k - 1].
constexpr int kLongestKnown = 12;
using Deviations = std::array<std::int8_t, kLongestKnown>;
constexpr auto kKnownDeviations = [] {
  std::array<std::array<Deviations, kLongestKnown + 1>, kLongestKnown + 1> known{};
  for (int along = 1; along <= kLongestKnown; ++along) {
    for (int across = 0; across <= along; ++across) {
      Deviation deviation(along, across);
      for (int k = 0; k < along; ++k) {
        known[static_cast<std::size_t>(along)][static_cast<std::size_t>(across)]
             [static_cast<std::size_t>(k)] = static_cast<std::int8_t>(deviation.Next());
      }
    }
  }
  return known;
}();

// What shapes are painted on: places, and steps from one place to another. On the plane itself a place is an
// address and a step a number of bytes.
class PlaneCanvas {
 public:
  using Place = std::uint8_t*;
  using Step = std::ptrdiff_t;

  explicit PlaneCanvas(TrackMarks& marks) : plane_(marks.Unfolded()) {}
  Place At(Pixel p) const { return plane_.At(p.x, p.y); }
  static Step Right() { return 1; }
  Step Down() const { return plane_.stride; }
  static void Mark(Place place, std::uint8_t colour) { *place = colour; }

  // Asks for the rows of a cross. Marks are written faster than memory answers.
  void Fetch(Pixel p) const {
    for (int d = -2; d <= 2; ++d) __builtin_prefetch(At(p) + d * Down(), 1);
  }

 private:
  MarkPlane plane_;
};

// At the world's upper and left edge the plane is folded, and steps are steps of coordinates.
class FoldedCanvas {
 public:
  struct Step {
    std::int64_t x, y;
    friend Step operator*(std::int64_t n, Step s) { return {n * s.x, n * s.y}; }
  };
  struct Place {
    std::int64_t x, y;
    friend Place operator+(Place p, Step s) { return {p.x + s.x, p.y + s.y}; }
  };

  explicit FoldedCanvas(TrackMarks& marks) : marks_(marks) {}
  static Place At(Pixel p) { return {p.x, p.y}; }
  static Step Right() { return {1, 0}; }
  static Step Down() { return {0, 1}; }
  void Mark(Place place, std::uint8_t colour) { marks_.MarkPixel(place.x, place.y, colour); }

 private:
  TrackMarks& marks_;
};

template <class Canvas>
void PaintCross(Canvas canvas, Pixel p) {
  const auto centre = canvas.At(p);
  for (int d = -2; d <= 2; ++d) canvas.Mark(centre + d * canvas.Right(), kRed);
  canvas.Mark(centre + -2 * canvas.Down(), kRed);
  canvas.Mark(centre + -1 * canvas.Down(), kRed);
  canvas.Mark(centre + canvas.Down(), kRed);
  canvas.Mark(centre + 2 * canvas.Down(), kRed);
}

template <class Canvas>
void Stamp(Canvas canvas, Pixel p, const Shape& shape, std::uint8_t colour) {
  const auto centre = canvas.At(p);
  for (const Pixel& d : shape) canvas.Mark(centre + d.x * canvas.Right() + d.y * canvas.Down(), colour);
}

// Three pixels wide, from the current point p1 back to the previous one, both ends left out so that their
// crosses stay whole. One step per pixel of the longer axis; no two steps share a pixel.
template <class Canvas>
void PaintSegment(Canvas canvas, Pixel p0, Pixel p1) {
  const int dx = p0.x - p1.x;
  const int dy = p0.y - p1.y;
  const bool steep = std::abs(dx) <= std::abs(dy);
  const int along = std::max(std::abs(dx), std::abs(dy));
  const int across = std::min(std::abs(dx), std::abs(dy));
  const int sign = (steep ? dy : dx) > 0 ? 1 : -1;
  const int signAcross = (steep ? dx : dy) > 0 ? 1 : -1;
  const auto ahead = sign * (steep ? canvas.Down() : canvas.Right());
  const auto aside = signAcross * (steep ? canvas.Right() : canvas.Down());
  // The phase of a step is its coordinate along the line, counted in the line's direction, plus 3.
  const int phase = static_cast<int>((sign * std::int64_t{steep ? p1.y : p1.x} + 1 + 3) & 3);
  std::uint64_t colours = std::rotr(kLinePattern, 16 * phase);
  auto onAxis = canvas.At(p1);
  const auto step = [&](int deviation) {
    onAxis = onAxis + ahead;
    const auto centre = onAxis + deviation * aside;
    canvas.Mark(centre, static_cast<std::uint8_t>(colours));
    canvas.Mark(centre + aside, static_cast<std::uint8_t>(colours >> 8));
    canvas.Mark(centre + -1 * aside, static_cast<std::uint8_t>(colours >> 8));
    colours = std::rotr(colours, 16);
  };
  if (along <= kLongestKnown) {
    const Deviations& known =
        kKnownDeviations[static_cast<std::size_t>(along)][static_cast<std::size_t>(across)];
    for (std::size_t k = 1; k < static_cast<std::size_t>(along); ++k) step(known[k - 1]);
  } else {
    Deviation deviation(along, across);
    for (int k = 1; k < along; ++k) step(deviation.Next());
  }
}

// No window is larger; the bound of what the plane takes.
constexpr int kLargestView = 32767;

// The part of one axis that is drawn: where points are visible, in pixels and in world units.
struct VisibleRange {
  VisibleRange(std::int32_t centre, int viewSize, std::int32_t unitsPerPixel) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t middle = centre / unitsPerPixel;
    const std::int64_t reach = std::min(viewSize, kLargestView) + kTileSize - 1;
    if (reach < 0) return;
    pixels.first = std::max<std::int64_t>(middle - reach, Limits::min() / unitsPerPixel);
    pixels.last = std::min<std::int64_t>(middle + reach, Limits::max() / unitsPerPixel);
    // Division cuts towards zero: a pixel below 0 begins a pixel's width before its multiple and ends at it.
    const std::int64_t begin = pixels.first * unitsPerPixel - (pixels.first > 0 ? 0 : unitsPerPixel - 1);
    const std::int64_t end = pixels.last * unitsPerPixel + (pixels.last < 0 ? 0 : unitsPerPixel - 1);
    first = std::max<std::int64_t>(begin, Limits::min());
    count = static_cast<std::uint64_t>(std::min<std::int64_t>(end, Limits::max()) - first + 1);
  }

  bool Holds(std::int32_t world) const { return static_cast<std::uint64_t>(world - first) < count; }

  // Rings reach this far beyond a visible pixel, and nothing else farther.
  static constexpr int kMargin = 8;
  PixelRange Marked() const {
    return pixels.last < pixels.first ? pixels : PixelRange{pixels.first - kMargin, pixels.last + kMargin};
  }

  PixelRange pixels;
  std::int64_t first = 0;
  std::uint64_t count = 0;
};

}  // namespace

class TrackPainter::Work {
 public:
  explicit Work(TrackDrawing drawing)
      : drawing_(std::move(drawing)),
        view_(drawing_),
        picture_{TrackMarks(view_.x.Marked(), view_.y.Marked()), {}},
        plane_(picture_.marks),
        folded_(picture_.marks) {}

  bool Paint(std::size_t count) {
    while (unit_ < drawing_.units.size()) {
      if (count == 0) return true;
      count -= PaintTrack(count);
    }
    count -= StampSome(received_, count, RingReceived(), kBlue);
    if (!received_.IsDone()) return true;
    count -= StampSome(notReceived_, count, RingNotReceived(), kRed);
    if (!notReceived_.IsDone()) return true;
    for (const auto& points : drawing_.units) PaintEnd(points, true);
    for (const auto& points : drawing_.units) PaintEnd(points, false);
    return false;
  }

  TrackPicture Take() { return std::move(picture_); }

 private:
  // Which points are visible, and where.
  struct View {
    explicit View(const TrackDrawing& drawing)
        : x(drawing.CentreX, drawing.browser.width, drawing.UnitsPerPixel),
          y(drawing.CentreY, drawing.browser.height, drawing.UnitsPerPixel),
          mask(drawing.UnitsPerPixel - 1),
          shift(std::countr_zero(static_cast<std::uint32_t>(drawing.UnitsPerPixel))) {
      assert(std::has_single_bit(static_cast<std::uint32_t>(drawing.UnitsPerPixel)));
    }

    bool Shows(const DataPoint& point) const { return x.Holds(point.x) && y.Holds(point.y); }
    Pixel PixelOf(const DataPoint& point) const { return {PixelOf(point.x), PixelOf(point.y)}; }

    VisibleRange x;
    VisibleRange y;

   private:
    // Division towards zero by a power of two.
    std::int32_t PixelOf(std::int32_t world) const { return (world + ((world >> 31) & mask)) >> shift; }

    std::int32_t mask;
    int shift;
  };

  static bool IsAtFold(Pixel p) { return p.x < VisibleRange::kMargin || p.y < VisibleRange::kMargin; }

  // A visible point, and whether the one before it is visible too.
  struct Spot {
    Pixel at;
    bool joined = false;
  };
  static constexpr std::size_t kBlock = 64;

  // Places to be stamped, of which the first `done` are.
  struct Stamps {
    std::vector<Pixel> places;
    std::size_t done = 0;
    bool IsDone() const { return done == places.size(); }
  };

  // At most so many of a unit's points; how many it were. In blocks: first the places of the points, whose
  // parts of the plane are fetched meanwhile, then their marks.
  std::size_t PaintTrack(std::size_t most) {
    const auto points = drawing_.units[unit_];
    const std::size_t from = next_;
    const std::size_t until = from + std::min(points.size() - from, most);
    // Copies: marks are bytes, which may be part of anything but of what lives here only.
    const View view = view_;
    const PlaneCanvas plane = plane_;
    const bool rings = drawing_.ringReceived || drawing_.ringNotReceived;
    std::uint32_t slowest = picture_.fastest.Slowest();
    std::array<Spot, kBlock> spots;
    Pixel last = last_;
    bool joined = joined_;
    for (std::size_t begin = from; begin < until; begin += kBlock) {
      const std::size_t end = std::min(begin + kBlock, until);
      std::size_t count = 0;
      bool atFold = joined && IsAtFold(last);
      for (std::size_t j = begin; j < end; ++j) {
        const bool visible = view.Shows(points[j]);
        if (visible) {
          const Pixel pixel = view.PixelOf(points[j]);
          if (rings) NoteRings(pixel, points[j].status);
          if (const std::uint32_t speed = points[j].status & kStatusSpeedMask; speed >= slowest) {
            picture_.fastest.Offer({j + 1, speed, unit_ + 1});
            slowest = picture_.fastest.Slowest();
          }
          spots[count++] = {pixel, joined};
          if (IsAtFold(pixel)) {
            atFold = true;
          } else {
            plane.Fetch(pixel);
          }
        }
        joined = visible;
      }
      const std::span visible(spots.data(), count);
      if (atFold) {
        PaintSpots(folded_, last, visible);
      } else {
        PaintSpots(plane, last, visible);
      }
      if (count > 0) last = visible.back().at;
    }
    if (until < points.size()) {
      next_ = until;
      last_ = last;
      joined_ = joined;
    } else {
      ++unit_;
      next_ = 0;
      joined_ = false;
    }
    return until - from;
  }

  template <class Canvas>
  static void PaintSpots(Canvas canvas, Pixel previous, std::span<const Spot> spots) {
    for (const Spot& spot : spots) {
      PaintCross(canvas, spot.at);
      if (spot.joined) PaintSegment(canvas, previous, spot.at);
      previous = spot.at;
    }
  }

  void NoteRings(Pixel pixel, std::uint32_t status) {
    if (drawing_.ringReceived && (status & kStatusReceived)) received_.places.push_back(pixel);
    if (drawing_.ringNotReceived && (status & kStatusNotReceived)) notReceived_.places.push_back(pixel);
  }

  void StampAt(Pixel p, const Shape& shape, std::uint8_t colour) {
    if (IsAtFold(p)) {
      Stamp(folded_, p, shape, colour);
    } else {
      Stamp(plane_, p, shape, colour);
    }
  }

  // At most so many of them; how many it were.
  std::size_t StampSome(Stamps& stamps, std::size_t most, const Shape& shape, std::uint8_t colour) {
    const std::size_t from = stamps.done;
    stamps.done = from + std::min(stamps.places.size() - from, most);
    for (std::size_t i = from; i < stamps.done; ++i) StampAt(stamps.places[i], shape, colour);
    return stamps.done - from;
  }

  // A unit with a single point gets the first point's green in both passes.
  void PaintEnd(std::span<const DataPoint> points, bool first) {
    if (points.empty()) return;
    const DataPoint& point = first ? points.front() : points.back();
    if (view_.Shows(point))
      StampAt(view_.PixelOf(point), RingEnds(), first || points.size() == 1 ? kGreen : kMagenta);
  }

  const TrackDrawing drawing_;
  View view_;
  TrackPicture picture_;
  PlaneCanvas plane_;
  FoldedCanvas folded_;
  // The point to be painted next, and the visible one before it.
  std::size_t unit_ = 0;
  std::size_t next_ = 0;
  Pixel last_;
  bool joined_ = false;
  Stamps received_;
  Stamps notReceived_;
};

void FastestPoints::Offer(const FastPoint& point) {
  if (point.speed < Slowest()) return;
  const auto slower = std::find_if(entries_.begin(), entries_.end(),
                                   [&point](const FastPoint& entry) { return entry.speed < point.speed; });
  entries_.insert(slower, point);
  if (entries_.size() > kMaxEntries) entries_.resize(kMaxEntries);
}

TrackPainter::TrackPainter(TrackDrawing drawing) : work_(std::make_unique<Work>(std::move(drawing))) {}

TrackPainter::~TrackPainter() = default;

bool TrackPainter::Paint(std::size_t count) { return work_->Paint(count); }

TrackPicture TrackPainter::Take() { return work_->Take(); }

TrackPicture DrawTracks(const TrackDrawing& drawing) {
  TrackPainter painter(drawing);
  while (painter.Paint(std::numeric_limits<std::size_t>::max())) {
  }
  return painter.Take();
}

}  // namespace pallomir
