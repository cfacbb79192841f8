#include "map/segment_steps.h"

#include <bit>

namespace pallomir {
namespace {

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

KnownSegment Know(const Course& course, std::int32_t stride) {
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

}  // namespace

KnownSegments::KnownSegments(std::ptrdiff_t stride) {
  for (int dy = -kLongestKnown; dy <= kLongestKnown; ++dy) {
    for (int dx = -kLongestKnown; dx <= kLongestKnown; ++dx)
      all_[IndexOf(dx, dy)] = Know(Course(dx, dy), static_cast<std::int32_t>(stride));
  }
}

}  // namespace pallomir
