#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "map/track_marks.h"

namespace pallomir {

/// Colours of the four phases along a line, 16 bits a phase from the lowest: the centre pixel in the low
/// byte, the two beside it in the high one. Shifted round by a phase for every step.
inline constexpr std::uint64_t kLinePattern = 0x0303'0203'0202'0302;
static_assert(kWhite == 2 && kBlack == 3);

/// The line that joins (0, 0) and (`along`, `across`) leaves its axis by across * k / along at step k,
/// rounded half to even. Both 0 or more, across <= along. One step at a time, with the remainder carried on.
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

/// Points follow each other closely, so that most segments are short, and how short is anybody's guess: a
/// loop over their steps costs a mispredicted branch each. So their steps are known beforehand and painted
/// kAtOnce at a time, those beyond the last repeating it.
inline constexpr int kLongestKnown = 9;
inline constexpr std::size_t kKnownSteps = kLongestKnown - 1;
inline constexpr std::size_t kAtOnce = kKnownSteps / 2;

/// The colours of the steps, repetitions included.
struct StepColours {
  std::array<std::uint8_t, kKnownSteps> centres;
  std::array<std::uint8_t, kKnownSteps> sides;
};

/// One segment's steps on a plane, as numbers of bytes from p1. As large as a cache line.
struct alignas(64) KnownSegment {
  std::array<std::int32_t, kKnownSteps> centres{};
  std::int32_t aside = 1;
  std::int32_t steps = 0;
  /// The phase of the first step is p1.x * phaseX + p1.y * phaseY.
  std::int32_t phaseX = 0;
  std::int32_t phaseY = 0;
  const std::array<StepColours, 4>* colours = nullptr;
};

/// All segments up to kLongestKnown, on planes of one stride.
class KnownSegments {
 public:
  explicit KnownSegments(std::ptrdiff_t stride);

  /// Null if the segment is too long.
  const KnownSegment* Find(int dx, int dy) const {
    const bool isKnown = Shifted(dx) < kWidth && Shifted(dy) < kWidth;
    return isKnown ? &all_[IndexOf(dx, dy)] : nullptr;
  }

 private:
  static constexpr unsigned kWidth = 2 * kLongestKnown + 1;
  static unsigned Shifted(int d) { return static_cast<unsigned>(d) + kLongestKnown; }
  static std::size_t IndexOf(int dx, int dy) { return Shifted(dy) * kWidth + Shifted(dx); }

  std::array<KnownSegment, std::size_t{kWidth} * kWidth> all_;
};

}  // namespace pallomir
