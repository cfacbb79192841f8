#include "timeline/tick_scale.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace pallomir {
namespace {

enum class Unit { kSecond, kMinute, kHour, kDay, kMonth, kYear };
enum class Shows { kYear = 1, kMonth, kDay, kHour, kMinute, kSecond };

struct Step {
  Unit unit;
  int count;
  Shows shows;  // what a label of this rank says
};

constexpr Step kSteps[kTickSteps + kSparseSteps + 1] = {
    {},  // steps count from 1
    {Unit::kSecond, 15, Shows::kSecond},
    {Unit::kMinute, 1, Shows::kMinute},
    {Unit::kMinute, 5, Shows::kMinute},
    {Unit::kMinute, 15, Shows::kMinute},
    {Unit::kHour, 1, Shows::kHour},
    {Unit::kHour, 3, Shows::kHour},
    {Unit::kHour, 12, Shows::kHour},
    {Unit::kDay, 1, Shows::kDay},
    {Unit::kDay, 7, Shows::kDay},
    {Unit::kMonth, 1, Shows::kMonth},
    {Unit::kMonth, 3, Shows::kMonth},
    {Unit::kYear, 1, Shows::kYear},
    // Those of windows in which even years lie too close together.
    {Unit::kYear, 5, Shows::kYear},
    {Unit::kYear, 10, Shows::kYear},
    {Unit::kYear, 50, Shows::kYear},
    {Unit::kYear, 100, Shows::kYear},
    {Unit::kYear, 500, Shows::kYear},
    {Unit::kYear, 1000, Shows::kYear},
};

constexpr const char* kHourLabels[24] = {"12m", "1a", "2a",  "3a",  "4a",  "5a", "6a",  "7a",
                                         "8a",  "9a", "10a", "11a", "12n", "1p", "2p",  "3p",
                                         "4p",  "5p", "6p",  "7p",  "8p",  "9p", "10p", "11p"};

// Ticks are drawn where there are more pixels than this from one to the next.
constexpr int kTickDistance = 4;
constexpr int kHeightPerRank = 2;

// 0 for the units whose length the calendar decides.
constexpr Millis FixedLength(Unit unit) {
  switch (unit) {
    case Unit::kSecond:
      return kSecond;
    case Unit::kMinute:
      return kMinute;
    case Unit::kHour:
      return kHour;
    case Unit::kDay:
      return kDay;
    case Unit::kMonth:
    case Unit::kYear:
      break;
  }
  return 0;
}

constexpr Millis FloorDivide(Millis value, Millis by) { return value / by - (value % by < 0 ? 1 : 0); }

// The day of the month stays, or becomes the last day of a shorter month.
Millis AddMonths(Millis time, int months) {
  const CivilTime t = ToCivil(time);
  const Millis first = ToMillis({t.year, t.month + months, 1});
  const Millis nextFirst = ToMillis({t.year, t.month + months + 1, 1});
  const Millis wanted = first + (t.day - 1) * kDay;
  return std::min(wanted, nextFirst - kDay) + (time - WholeDay(time));
}

Millis AddStep(Millis time, const Step& step) {
  const Millis length = FixedLength(step.unit);
  if (length > 0) return time + step.count * length;
  return AddMonths(time, step.unit == Unit::kMonth ? step.count : 12 * step.count);
}

// How often a new second, minute ... year begins after `from` up to `to`.
Millis DateDiff(Unit unit, Millis from, Millis to) {
  const Millis length = FixedLength(unit);
  if (length > 0) return FloorDivide(to, length) - FloorDivide(from, length);
  const CivilTime a = ToCivil(from);
  const CivilTime b = ToCivil(to);
  const int years = b.year - a.year;
  return unit == Unit::kYear ? years : 12 * years + b.month - a.month;
}

// The coarsest of `last` steps where none is as long as the window.
int CoveringStep(const TimeWindow& window, int last) {
  for (int k = 1; k < last; ++k)
    if (AddStep(window.start, kSteps[k]) >= window.end) return k;
  return last;
}

// 0 when there is none.
int DrawnStep(const TimeWindow& window, int width) {
  for (int s = 1; s <= kTickSteps + kSparseSteps; ++s) {
    const Millis boundaries = DateDiff(kSteps[s].unit, window.start, window.end);
    if (kTickDistance * boundaries / (Millis{width} * kSteps[s].count) < 1) return s;
  }
  return 0;
}

// Steps of 7 days don't stay on their own grid across the end of a month: such ticks rank as the finest.
int RankOf(Millis tick, int coveringStep, int drawnStep) {
  for (int k = coveringStep; k >= drawnStep; --k)
    if (FloorToStep(tick, k) == tick) return k;
  return drawnStep;
}

std::string LabelText(Millis tick, Shows shows) {
  const CivilTime t = ToCivil(tick);
  char text[32];
  switch (shows) {
    case Shows::kYear:
      return std::to_string(t.year);
    case Shows::kMonth:
      std::snprintf(text, sizeof text, "%d/%02d", t.month, t.year % 100);
      return text;
    case Shows::kDay:
      std::snprintf(text, sizeof text, "%d/%d", t.month, t.day);
      return text;
    case Shows::kHour:
      return kHourLabels[t.hour];
    case Shows::kMinute:
      return std::to_string(t.minute);
    case Shows::kSecond:
      break;
  }
  return std::to_string(t.second);
}

Tick MakeTick(Millis time, int column, const TickScale& scale) {
  Tick tick;
  tick.time = time;
  tick.column = column;
  tick.rank = RankOf(time, scale.coveringStep, scale.drawnStep);
  tick.height = kHeightPerRank * (tick.rank + 1 - scale.drawnStep);
  if (tick.rank > scale.drawnStep + 1) tick.label = LabelText(time, kSteps[tick.rank].shows);
  return tick;
}

}  // namespace

Millis FloorToStep(Millis time, int step) {
  const auto [unit, count, shows] = kSteps[step];
  // Whole numbers of seconds, minutes and hours fill a day, so they may be counted from any midnight.
  if (unit != Unit::kDay && FixedLength(unit) > 0) {
    const Millis length = count * FixedLength(unit);
    return FloorDivide(time, length) * length;
  }
  const CivilTime t = ToCivil(time);
  if (unit == Unit::kYear) return ToMillis({t.year / count * count, 1, 1});
  if (unit == Unit::kMonth) return ToMillis({t.year, t.month / count * count, 1});
  return ToMillis({t.year, t.month, t.day / count * count});
}

bool IsDrawable(const TimeWindow& window, int width) {
  return width > 0 && width <= kMaxStripWidth && window.start < window.end && IsPossibleWindow(window);
}

std::int64_t ColumnOf(const TimeWindow& window, int width, Millis time) {
  return FloorDivide((time - window.start) * width, window.Length());
}

std::optional<TickScale> BuildTickScale(const TimeWindow& window, int width) {
  if (!IsDrawable(window, width)) return std::nullopt;
  const int drawnStep = DrawnStep(window, width);
  if (drawnStep == 0) return std::nullopt;
  const int last = drawnStep <= kTickSteps ? kTickSteps : kTickSteps + kSparseSteps;
  TickScale scale{CoveringStep(window, last), drawnStep, {}};
  const Step& step = kSteps[scale.drawnStep];
  // Ends after some width / 2 steps: that is what the drawn step was chosen for.
  for (Millis time = FloorToStep(window.start, scale.drawnStep); time <= window.end;
       time = AddStep(time, step)) {
    const std::int64_t column = ColumnOf(window, width, time);
    if (column < 0) continue;
    Tick tick = MakeTick(time, static_cast<int>(column), scale);
    if (column < width || !tick.label.empty()) scale.ticks.push_back(std::move(tick));
  }
  return scale;
}

}  // namespace pallomir
