#include "tracking/coverage.h"

#include <algorithm>
#include <cassert>

#include "base/packed_time.h"

namespace pallomir {

void Coverage::Reset(std::size_t unitCount) {
  units_.assign(unitCount, {});
  sentUntil_.reset();
}

Millis Coverage::Ask(Millis windowStart, bool whole) {
  windowStart_ = askedFrom_ = windowStart;
  if (whole) return askedFrom_;
  Millis from = sentUntil_.value_or(windowStart);
  for (const Unit& unit : units_) {
    if (unit.gapUntil) from = std::min(from, unit.wholeUntil.value_or(windowStart));
  }
  askedFrom_ = std::max(windowStart, from - kOverlap);
  return askedFrom_;
}

void Coverage::Take(std::size_t k, const std::vector<DataPoint>& rows, Millis nowUtc) {
  assert(k >= 1 && k <= units_.size() && !rows.empty());
  const auto timeOf = [](const DataPoint& point) { return DecodePackedTime(point.time).value_or(0); };
  const auto isOfNow = [&](const DataPoint& point) { return timeOf(point) <= nowUtc + kMostAhead; };
  const auto end = std::partition_point(rows.begin(), rows.end(), isOfNow);
  if (end == rows.begin()) return;  // points of the future say nothing of what came before
  sentUntil_ = std::max(sentUntil_, std::optional(timeOf(rows.front())));
  Unit& unit = units_[k - 1];
  const Millis wholeUntil = unit.wholeUntil.value_or(windowStart_);
  const Millis newest = timeOf(*(end - 1));
  if (askedFrom_ > wholeUntil) {
    unit.gapUntil = std::max(unit.gapUntil, std::optional(newest));
    return;
  }
  unit.wholeUntil = std::max(wholeUntil, newest);
  if (unit.gapUntil && *unit.wholeUntil >= *unit.gapUntil) unit.gapUntil.reset();
}

bool Coverage::HasGap() const {
  return std::any_of(units_.begin(), units_.end(), [this](const Unit& unit) {
    return unit.gapUntil && unit.wholeUntil.value_or(windowStart_) < askedFrom_;
  });
}

}  // namespace pallomir
