#include "journal/unit_crossings.h"

#include <algorithm>
#include <map>

#include "base/data_point.h"
#include "map/projection.h"

namespace pallomir {
namespace {

// Beyond that many the oldest are forgotten: late points there are looked at without what lies around them.
constexpr std::ptrdiff_t kMost = 1'000'000;

constexpr double kMetersPerMile = 1000 * kKilometersPerMile;

}  // namespace

UnitCrossings::Stretch UnitCrossings::Replace(Millis after, Millis until,
                                              std::span<const ZoneCrossing> crossings) {
  const auto endsLater = [](Millis time, const ZoneCrossing& crossing) { return time < crossing.wayEnd; };
  const auto indexOf = [this](auto at) { return static_cast<std::size_t>(at - all_.begin()); };
  std::size_t begin = indexOf(std::upper_bound(all_.begin(), all_.end(), after, endsLater));
  std::size_t end = indexOf(std::upper_bound(all_.begin(), all_.end(), until, endsLater));
  if (begin == end && crossings.empty())
    return {after + 1, end < all_.size() ? std::min(until, all_[end].utc - 1) : until, {}};
  std::vector<ZoneCrossing> now(crossings.begin(), crossings.end());
  KeepMarks(begin, end, now);
  const auto at = all_.erase(all_.begin() + static_cast<std::ptrdiff_t>(begin),
                             all_.begin() + static_cast<std::ptrdiff_t>(end));
  all_.insert(at, now.begin(), now.end());
  end = begin + now.size();
  // What wavers hangs together without a longer pause.
  while (begin > 0 && (begin == all_.size() || !IsPauseBefore(begin))) --begin;
  while (end < all_.size() && (end == 0 || !IsPauseBefore(end))) ++end;
  Stretch stretch{after + 1, until, Counting(begin, end)};
  if (begin > 0) {
    stretch.from = all_[begin - 1].utc + 1;
  } else if (!all_.empty()) {
    stretch.from = std::min(stretch.from, all_.front().utc);
  }
  if (end < all_.size()) {
    stretch.until = all_[end].utc - 1;
  } else if (!all_.empty()) {
    stretch.until = std::max(until, all_.back().utc);
  }
  if (std::ssize(all_) > kMost) all_.erase(all_.begin(), all_.begin() + kMost / 4);
  return stretch;
}

// A crossing that was known is no later than before.
void UnitCrossings::KeepMarks(std::size_t begin, std::size_t end, std::vector<ZoneCrossing>& now) const {
  for (ZoneCrossing& crossing : now) {
    while (begin < end && all_[begin].utc < crossing.utc) ++begin;
    for (std::size_t known = begin; known < end && all_[known].utc == crossing.utc; ++known) {
      if (IsSameCrossing(all_[known], crossing)) crossing.isLate = all_[known].isLate;
    }
  }
}

bool UnitCrossings::IsPauseBefore(std::size_t at) const {
  return all_[at].utc - all_[at - 1].utc > limits_.time;
}

bool UnitCrossings::IsWavering(const ZoneCrossing& before, const ZoneCrossing& now) const {
  return now.utc - before.utc <= limits_.time &&
         GroundDistanceMiles(before.place.x, before.place.y, now.place.x, now.place.y) * kMetersPerMile <=
             limits_.meters;
}

std::vector<ZoneCrossing> UnitCrossings::Counting(std::size_t begin, std::size_t end) const {
  struct Border {
    std::size_t last = 0;          // crossing of it
    std::vector<std::size_t> run;  // that count, of those that hang together
  };
  std::map<ZoneOrdinal, Border> borders;
  std::vector<bool> counts(end - begin, true);
  for (std::size_t at = begin; at < end; ++at) {
    const auto [found, isFirst] = borders.try_emplace(all_[at].zone);
    Border& border = found->second;
    if (isFirst || !IsWavering(all_[border.last], all_[at])) border.run.clear();
    border.last = at;
    border.run.push_back(at);
    if (border.run.size() == 3) {
      counts[border.run[1] - begin] = counts[border.run[2] - begin] = false;
      border.run.resize(1);
    }
  }
  std::vector<ZoneCrossing> counting;
  for (std::size_t at = begin; at < end; ++at) {
    if (counts[at - begin]) counting.push_back(all_[at]);
  }
  return counting;
}

}  // namespace pallomir
