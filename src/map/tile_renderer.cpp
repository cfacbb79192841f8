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

// A visible point, and whether the one before it is visible too.
struct Spot {
  Pixel at;
  bool joined = false;
  std::uint8_t* onPlane = nullptr;  // its place there; null at the plane's folds
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

// How a segment lies, from its current point p1 back to the previous one.
struct Course {
  constexpr Course(int dx, int dy)
      : steep(std::abs(dx) <= std::abs(dy)),
        along(std::max(std::abs(dx), std::abs(dy))),
        across(std::min(std::abs(dx), std::abs(dy))),
        sign((steep ? dy : dx) > 0 ? 1 : -1),
        signAcross((steep ? dx : dy) > 0 ? 1 : -1) {}

  bool steep;
  int along;
  int across;
  int sign;
  int signAcross;
};

// Points follow each other closely, so that most segments are short, and how short is anybody's guess: a loop
// over their steps costs a mispredicted branch each. So their steps are known beforehand and painted
// kAtOnce at a time, those beyond the last repeating it.
constexpr int kLongestKnown = 9;
constexpr std::size_t kKnownSteps = kLongestKnown - 1;
constexpr std::size_t kAtOnce = kKnownSteps / 2;

// The colours of the steps, repetitions included.
struct StepColours {
  std::array<std::uint8_t, kKnownSteps> centres;
  std::array<std::uint8_t, kKnownSteps> sides;
};

// By number of steps and phase of the first one.
constexpr auto kStepColours = [] {
  std::array<std::array<StepColours, 4>, kKnownSteps + 1> all{};
  for (std::size_t steps = 0; steps <= kKnownSteps; ++steps) {
    for (std::size_t phase = 0; phase < 4; ++phase) {
      StepColours& colours = all[steps][phase];
      for (std::size_t k = 0; k < kKnownSteps; ++k) {
        const std::size_t step = steps > 0 ? std::min(k, steps - 1) : 0;
        const std::uint64_t pattern = std::rotr(kLinePattern, static_cast<int>(16 * ((phase + step) % 4)));
        // Without a step the middle of the cross is painted once more.
        colours.centres[k] = steps > 0 ? static_cast<std::uint8_t>(pattern) : std::uint8_t{kRed};
        colours.sides[k] = steps > 0 ? static_cast<std::uint8_t>(pattern >> 8) : std::uint8_t{kRed};
      }
    }
  }
  return all;
}();

// One segment's steps on a plane, as numbers of bytes from p1. As large as a cache line.
struct alignas(64) KnownSegment {
  std::array<std::int32_t, kKnownSteps> centres{};
  std::int32_t aside = 1;
  std::int32_t steps = 0;
  // The phase of the first step is p1.x * phaseX + p1.y * phaseY.
  std::int32_t phaseX = 0;
  std::int32_t phaseY = 0;
  const std::array<StepColours, 4>* colours = nullptr;
};

// All segments up to kLongestKnown, on planes of one stride.
class KnownSegments {
 public:
  explicit KnownSegments(std::ptrdiff_t stride) {
    for (int dy = -kLongestKnown; dy <= kLongestKnown; ++dy) {
      for (int dx = -kLongestKnown; dx <= kLongestKnown; ++dx)
        all_[IndexOf(dx, dy)] = Know(Course(dx, dy), static_cast<std::int32_t>(stride));
    }
  }

  // Null if the segment is too long.
  const KnownSegment* Find(int dx, int dy) const {
    const bool isKnown = Shifted(dx) < kWidth && Shifted(dy) < kWidth;
    return isKnown ? &all_[IndexOf(dx, dy)] : nullptr;
  }

 private:
  static constexpr unsigned kWidth = 2 * kLongestKnown + 1;
  static unsigned Shifted(int d) { return static_cast<unsigned>(d) + kLongestKnown; }
  static std::size_t IndexOf(int dx, int dy) { return Shifted(dy) * kWidth + Shifted(dx); }

  static KnownSegment Know(const Course& course, std::int32_t stride) {
    KnownSegment known;
    const std::int32_t ahead = course.sign * (course.steep ? stride : 1);
    const std::int32_t aside = course.steep ? 1 : stride;
    known.aside = aside;
    known.steps = std::max(course.along - 1, 0);
    (course.steep ? known.phaseY : known.phaseX) = course.sign;
    known.colours = &kStepColours[static_cast<std::size_t>(known.steps)];
    Deviation deviation(course.along, course.across);
    std::int32_t place = 0;
    for (int k = 1; k <= static_cast<int>(kKnownSteps); ++k) {
      if (k <= known.steps) place = k * ahead + course.signAcross * deviation.Next() * aside;
      known.centres[static_cast<std::size_t>(k - 1)] = place;
    }
    return known;
  }

  std::array<KnownSegment, std::size_t{kWidth} * kWidth> all_;
};

// What shapes are painted on: places, and steps from one place to another. On the plane itself a place is an
// address and a step a number of bytes.
class PlaneCanvas {
 public:
  using Place = std::uint8_t*;
  using Step = std::ptrdiff_t;

  PlaneCanvas(TrackMarks& marks, const KnownSegments& known) : plane_(marks.Unfolded()), known_(&known) {}
  Place At(Pixel p) const { return plane_.At(p.x, p.y); }
  static Place Of(const Spot& spot) { return spot.onPlane; }
  static Step Right() { return 1; }
  Step Down() const { return plane_.stride; }
  static void Mark(Place place, std::uint8_t colour) { *place = colour; }

  const KnownSegment* FindKnown(int dx, int dy) const { return known_->Find(dx, dy); }

  // Asks for the rows of a cross and, on either side, of what joins it to the next. Marks are written faster
  // than memory answers.
  void Fetch(Place at) const {
    for (int d = -4; d <= 4; ++d) __builtin_prefetch(at + d * Down(), 1);
  }

 private:
  MarkPlane plane_;
  const KnownSegments* known_;
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
  static Place Of(const Spot& spot) { return At(spot.at); }
  static Step Right() { return {1, 0}; }
  static Step Down() { return {0, 1}; }
  void Mark(Place place, std::uint8_t colour) { marks_.MarkPixel(place.x, place.y, colour); }

 private:
  TrackMarks& marks_;
};

template <class Canvas>
void PaintCross(Canvas canvas, typename Canvas::Place centre) {
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
void PaintSegment(Canvas canvas, typename Canvas::Place at, Pixel p0, Pixel p1) {
  const Course course(p0.x - p1.x, p0.y - p1.y);
  const auto ahead = course.sign * (course.steep ? canvas.Down() : canvas.Right());
  const auto aside = course.signAcross * (course.steep ? canvas.Right() : canvas.Down());
  // The phase of a step is its coordinate along the line, counted in the line's direction, plus 3.
  const int phase = static_cast<int>((course.sign * std::int64_t{course.steep ? p1.y : p1.x} + 1 + 3) & 3);
  std::uint64_t colours = std::rotr(kLinePattern, 16 * phase);
  auto onAxis = at;
  const auto step = [&](int deviation) {
    onAxis = onAxis + ahead;
    const auto centre = onAxis + deviation * aside;
    canvas.Mark(centre, static_cast<std::uint8_t>(colours));
    canvas.Mark(centre + aside, static_cast<std::uint8_t>(colours >> 8));
    canvas.Mark(centre + -1 * aside, static_cast<std::uint8_t>(colours >> 8));
    colours = std::rotr(colours, 16);
  };
  Deviation deviation(course.along, course.across);
  for (int k = 1; k < course.along; ++k) step(deviation.Next());
}

// The same for a segment whose steps are known.
template <std::size_t kFirst>
void PaintKnownSteps(std::uint8_t* at, const KnownSegment& known, const StepColours& colours) {
  std::uint8_t* const oneSide = at + known.aside;
  std::uint8_t* const otherSide = at - known.aside;
  for (std::size_t k = kFirst; k < kFirst + kAtOnce; ++k) {
    const std::ptrdiff_t place = known.centres[k];
    at[place] = colours.centres[k];
    const std::uint8_t side = colours.sides[k];
    oneSide[place] = side;
    otherSide[place] = side;
  }
}

inline void PaintSegment(PlaneCanvas canvas, std::uint8_t* at, Pixel p0, Pixel p1) {
  const KnownSegment* const known = canvas.FindKnown(p0.x - p1.x, p0.y - p1.y);
  if (!known) return PaintSegment<PlaneCanvas>(canvas, at, p0, p1);
  const auto phase = static_cast<unsigned>(p1.x * known->phaseX + p1.y * known->phaseY) % 4;
  const StepColours& colours = (*known->colours)[phase];
  PaintKnownSteps<0>(at, *known, colours);
  if (known->steps > static_cast<int>(kAtOnce)) PaintKnownSteps<kAtOnce>(at, *known, colours);
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
        known_(picture_.marks.Unfolded().stride),
        plane_(picture_.marks, known_),
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

  // So few that what was fetched for a block is still near when it is painted.
  static constexpr std::size_t kBlock = 32;

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
          std::uint8_t* onPlane = nullptr;
          if (IsAtFold(pixel)) {
            atFold = true;
          } else {
            onPlane = plane.At(pixel);
            plane.Fetch(onPlane);
          }
          spots[count++] = {pixel, joined, onPlane};
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
      const auto at = canvas.Of(spot);
      PaintCross(canvas, at);
      if (spot.joined) PaintSegment(canvas, at, previous, spot.at);
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
  KnownSegments known_;
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
