#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "timeline/time_window.h"

namespace pallomir {

/// The steps in which ticks can follow one another, finest first, numbered 1 to 12: 15 seconds; 1, 5 and 15
/// minutes; 1, 3 and 12 hours; 1 and 7 days; 1 and 3 months; 1 year.
inline constexpr int kTickSteps = 12;

/// Further ones, for windows in which years lie too close together: 5, 10, 50, 100, 500 and 1000 years.
inline constexpr int kSparseSteps = 6;

/// No strip is wider: products of a width and the longest possible window then fit 64 bits.
inline constexpr int kMaxStripWidth = 16383;

/// One line of the time scale.
struct Tick {
  int column = 0;  ///< 0 at the window's start; at its very end the strip's width, where only a label stands
  int rank = 0;    ///< the coarsest step on whose grid the tick lies
  int height = 0;  ///< pixels, from the top; 2 for the finest ticks
  std::string label;  ///< empty for most
  Millis time = 0;    ///< what it stands for, local
  bool operator==(const Tick&) const = default;
};

/// The time scale of a strip: the same for every row.
struct TickScale {
  int coveringStep = 0;     ///< the finest step as long as the window
  int drawnStep = 0;        ///< the finest step whose ticks lie more than 4 pixels apart
  std::vector<Tick> ticks;  ///< columns ascend
  bool operator==(const TickScale&) const = default;
};

/// Whether a strip of `width` pixels can show the window: some pixels, some length, possible ends.
bool IsDrawable(const TimeWindow& window, int width);

/// The scale of a window of local time on `width` pixels; nothing where the window can't be shown or even
/// millennia lie too close together.
std::optional<TickScale> BuildTickScale(const TimeWindow& window, int width);

/// The pixel column of a moment in a drawable window: below 0 before its start, `width` or more from its end.
std::int64_t ColumnOf(const TimeWindow& window, int width, Millis time);

/// The moment on the grid of step 1..18 at or before `time`. Steps of 7 days start anew with each month, from
/// the last day of the month before; steps of 3 months lie on 1 March, June, September and December.
Millis FloorToStep(Millis time, int step);

}  // namespace pallomir
