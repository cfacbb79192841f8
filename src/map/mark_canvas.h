#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "map/ring_shapes.h"
#include "map/segment_steps.h"
#include "map/track_marks.h"

namespace pallomir {

/// A visible point, and whether the one before it is visible too.
struct Spot {
  Pixel at;
  bool joined = false;
  std::uint8_t* onPlane = nullptr;  // its place there; null at the plane's folds
};

/// What shapes are painted on: places, and steps from one place to another. On the plane itself a place is an
/// address and a step a number of bytes.
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

  /// Asks for the rows of a cross and, on either side, of what joins it to the next. Marks are written faster
  /// than memory answers.
  void Fetch(Place at) const {
    for (int d = -4; d <= 4; ++d) __builtin_prefetch(at + d * Down(), 1);
  }

 private:
  MarkPlane plane_;
  const KnownSegments* known_;
};

/// At the world's upper and left edge the plane is folded, and steps are steps of coordinates.
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

/// Three pixels wide, from the current point p1 back to the previous one, both ends left out so that their
/// crosses stay whole. One step per pixel of the longer axis; no two steps share a pixel. Returns how many
/// steps it took one by one.
template <class Canvas>
int PaintSegment(Canvas canvas, typename Canvas::Place at, Pixel p0, Pixel p1) {
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
  return course.along;
}

/// The same for a segment whose steps are known.
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

inline int PaintSegment(PlaneCanvas canvas, std::uint8_t* at, Pixel p0, Pixel p1) {
  const KnownSegment* const known = canvas.FindKnown(p0.x - p1.x, p0.y - p1.y);
  if (!known) return PaintSegment<PlaneCanvas>(canvas, at, p0, p1);
  const auto phase = static_cast<unsigned>(p1.x * known->phaseX + p1.y * known->phaseY) % 4;
  const StepColours& colours = (*known->colours)[phase];
  PaintKnownSteps<0>(at, *known, colours);
  if (known->steps > static_cast<int>(kAtOnce)) PaintKnownSteps<kAtOnce>(at, *known, colours);
  return 0;
}

}  // namespace pallomir
