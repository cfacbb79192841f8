#include "map/tile_renderer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <limits>
#include <utility>

#include "map/mark_canvas.h"
#include "map/ring_shapes.h"

namespace pallomir {
namespace {

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
  // So many steps take as long as a point with a short segment.
  static constexpr std::size_t kStepsAPoint = 8;

  // Places to be stamped, of which the first `done` are.
  struct Stamps {
    std::vector<Pixel> places;
    std::size_t done = 0;
    bool IsDone() const { return done == places.size(); }
  };

  // The work of at most so many of a unit's points; how much it was. In blocks: first the places of the
  // points, whose parts of the plane are fetched meanwhile, then their marks.
  std::size_t PaintTrack(std::size_t most) {
    const auto points = drawing_.units[unit_];
    const std::size_t from = next_;
    std::size_t until = from + std::min(points.size() - from, most);
    std::size_t longSteps = 0;
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
            picture_.fastest.Offer({j + 1, speed, unit_ + 1, WithoutFlag(points[j].time)});
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
      longSteps += atFold ? PaintSpots(folded_, last, visible) : PaintSpots(plane, last, visible);
      if (count > 0) last = visible.back().at;
      if (end - from + longSteps / kStepsAPoint >= most) until = end;
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
    return std::min(until - from + longSteps / kStepsAPoint, most);
  }

  // How many steps of segments were taken one by one.
  template <class Canvas>
  static std::size_t PaintSpots(Canvas canvas, Pixel previous, std::span<const Spot> spots) {
    std::size_t steps = 0;
    for (const Spot& spot : spots) {
      const auto at = canvas.Of(spot);
      PaintCross(canvas, at);
      if (spot.joined) steps += static_cast<std::size_t>(PaintSegment(canvas, at, previous, spot.at));
      previous = spot.at;
    }
    return steps;
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
