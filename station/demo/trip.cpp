#include "station/demo/trip.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace pallomir::station {
namespace {

constexpr double kAcceleration = 1.4;  // metres a second squared
constexpr double kBraking = 1.9;

// How drivers keep to a speed limit: at a share of it that changes over so many metres.
constexpr double kSlowestPace = 0.86;
constexpr double kFastestPace = 1.06;
constexpr double kPaceMeters = 1800;

constexpr double kRedLightChance = 0.3;
constexpr double kShortestWait = 6, kLongestWait = 42;
constexpr double kShortestStart = 20, kLongestStart = 200;

// Kinds of rolls, so that no two of a trip share a key.
enum Key : std::uint64_t { kPaceKey = 1ull << 32, kLightKey = 2ull << 32, kWaitKey = 3ull << 32 };

std::uint64_t Mixed(std::uint64_t x) {  // a bijection that spreads neighbouring numbers over all 64 bits
  x += 0x9E3779B97F4A7C15u;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
  return x ^ (x >> 31);
}

double PaceAt(double distance, const Dice& dice) {
  const double stretch = std::floor(distance / kPaceMeters);
  const auto key = kPaceKey + static_cast<std::uint64_t>(stretch);
  return std::lerp(dice.Between(kSlowestPace, kFastestPace, key),
                   dice.Between(kSlowestPace, kFastestPace, key + 1), distance / kPaceMeters - stretch);
}

}  // namespace

Dice::Dice(std::uint64_t unit, std::uint64_t trip) : seed_(Mixed(Mixed(unit) ^ trip)) {}

double Dice::Roll(std::uint64_t key) const { return static_cast<double>(Mixed(seed_ ^ key) >> 11) * 0x1p-53; }

Trip::Trip(const Path& path, const Dice& dice) : path_(path), passages_(path.size()) {
  assert(path.size() >= 2);
  ChooseSpeedsAndStops(dice);
  LimitAcceleration();
  KeepTime();
}

// Until KeepTime, `departure` holds how long the vehicle stands at the vertex.
void Trip::ChooseSpeedsAndStops(const Dice& dice) {
  for (std::size_t i = 0; i < path_.size(); ++i) {
    const PathVertex& vertex = path_[i];
    double stand = vertex.stopSeconds * dice.Between(0.6, 1.4, kWaitKey + i);
    if (vertex.crossing && stand == 0 && dice.Roll(kLightKey + i) < kRedLightChance)
      stand = dice.Between(kShortestWait, kLongestWait, kWaitKey + i);
    if (i == 0) stand = dice.Between(kShortestStart, kLongestStart, kWaitKey);
    const bool stops = stand > 0 || i == 0 || i + 1 == path_.size();
    const double limit = i + 1 < path_.size() && i > 0 ? std::min(vertex.speedLimit, path_[i + 1].speedLimit)
                                                       : vertex.speedLimit;
    passages_[i].departure = stand;
    passages_[i].speed = stops ? 0 : std::min(limit * PaceAt(vertex.distance, dice), vertex.cornerSpeed);
  }
}

void Trip::LimitAcceleration() {
  const auto reachable = [this](std::size_t from, std::size_t to, double acceleration) {
    const double meters = std::fabs(path_[to].distance - path_[from].distance);
    return std::sqrt(passages_[from].speed * passages_[from].speed + 2 * acceleration * meters);
  };
  for (std::size_t i = 1; i < passages_.size(); ++i)
    passages_[i].speed = std::min(passages_[i].speed, reachable(i - 1, i, kAcceleration));
  for (std::size_t i = passages_.size() - 1; i-- > 0;)
    passages_[i].speed = std::min(passages_[i].speed, reachable(i + 1, i, kBraking));
}

// Every leg has at least two pieces, so no piece has a stop at both ends and the mean speed is never zero.
void Trip::KeepTime() {
  for (std::size_t i = 1; i < passages_.size(); ++i) {
    const double meters = path_[i].distance - path_[i - 1].distance;
    passages_[i].arrival =
        passages_[i - 1].departure + 2 * meters / (passages_[i - 1].speed + passages_[i].speed);
    passages_[i].departure += passages_[i].arrival;
    assert(passages_[i].arrival >= passages_[i - 1].departure);
    assert(passages_[i].departure >= passages_[i].arrival);
  }
}

Trip::Moment Trip::At(double seconds) const {
  const auto next = std::upper_bound(passages_.begin(), passages_.end(), seconds,
                                     [](double time, const Passage& p) { return time < p.departure; });
  if (next == passages_.end() || (next + 1 == passages_.end() && seconds >= next->arrival))
    return {path_.back().place, 0, path_.back().heading, std::numeric_limits<double>::infinity()};
  const auto index = static_cast<std::size_t>(next - passages_.begin());
  const PathVertex& to = path_[index];
  if (index == 0 || seconds >= next->arrival) return {to.place, 0, to.heading, next->departure};
  const PathVertex& from = path_[index - 1];
  const Passage& left = *(next - 1);
  const double elapsed = seconds - left.departure;
  const double acceleration = (next->speed - left.speed) / (next->arrival - left.departure);
  const double meters = elapsed * (left.speed + acceleration * elapsed / 2);
  const double share = std::clamp(meters / (to.distance - from.distance), 0.0, 1.0);
  return {{std::lerp(from.place.latitude, to.place.latitude, share),
           std::lerp(from.place.longitude, to.place.longitude, share)},
          left.speed + acceleration * elapsed,
          to.heading,
          seconds};
}

}  // namespace pallomir::station
