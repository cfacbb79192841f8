#include "station/demo/demo_units.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/data_point.h"
#include "base/packed_time.h"
#include "station/demo/routes.h"
#include "station/demo/trip.h"

namespace pallomir::station {
namespace {

constexpr std::int64_t kHourSeconds = 3600;
constexpr std::int64_t kShortestInterval = 5;

// The share of reports that are contact points, and the share of these that are not heard.
constexpr double kContactChance = 1 / 30.0;
constexpr double kUnheardChance = 1 / 12.0;

constexpr double kDrivingNoiseMeters = 2.5;
constexpr double kStandingNoiseMeters = 1.2;

enum Key : std::uint64_t {
  kIntervalKey = 11ull << 32,
  kEastKey = 12ull << 32,
  kNorthKey = 13ull << 32,
  kContactKey = 14ull << 32,
  kUnheardKey = 15ull << 32
};

std::uint16_t ContactBits(const Dice& dice, std::uint64_t report) {
  if (dice.Roll(kContactKey + report) >= kContactChance) return 0;
  return dice.Roll(kUnheardKey + report) < kUnheardChance ? kStatusNotReceived : kStatusReceived;
}

WireRecord Report(const Trip::Moment& moment, std::uint32_t time, const Dice& dice, std::uint64_t report) {
  const double noise = moment.speed > 0 ? kDrivingNoiseMeters : kStandingNoiseMeters;
  const Place seen = Moved(moment.place, dice.Between(-noise, noise, kEastKey + report),
                           dice.Between(-noise, noise, kNorthKey + report));
  const auto status =
      static_cast<std::uint16_t>(StatusWord(moment.speed, moment.heading) | ContactBits(dice, report));
  return {time, PositionUnits(seen.latitude), PositionUnits(seen.longitude), status};
}

// Seconds to the next report. A unit that stands reports soon after it moves on.
std::int64_t Interval(const Trip::Moment& moment, std::int64_t second, double roll) {
  if (moment.speed > 0) return kShortestInterval + static_cast<std::int64_t>(roll * 11);
  const auto standing = 50 + static_cast<std::int64_t>(roll * 20);
  const double untilItMoves = std::ceil(moment.standsUntil - static_cast<double>(second)) + 3;
  return untilItMoves < static_cast<double>(standing)
             ? std::max(kShortestInterval, static_cast<std::int64_t>(untilItMoves))
             : standing;
}

DemoUnit Loop(std::string_view id, std::string_view description, std::int64_t hours, Path path) {
  return {id, description, hours * kHourSeconds, 0, std::move(path), {}};
}

DemoUnit ThereAndBack(std::string_view id, std::string_view description, std::int64_t hours, Path path) {
  DemoUnit unit = Loop(id, description, hours, std::move(path));
  unit.back = Reversed(unit.there);
  return unit;
}

std::vector<DemoUnit> MakeDemoUnits() {
  std::vector<DemoUnit> units;
  units.push_back(Loop("000000000001", "Delivery Route", 2, DeliveryRoute()));
  units.push_back(Loop("000000000002", "Demo Driver A", 2, EastonLoop()));
  units.push_back(Loop("000000000003", "Demo Driver B", 2, AllentownLoop()));
  units.push_back(Loop("000000000004", "Demo Driver C", 2, SaucconLoop()));
  units.push_back(ThereAndBack("000000000005", "To Philly Airport", 2, BethlehemToPhillyAirport()));
  units.push_back(ThereAndBack("000000000006", "Dallas/Nashville", 12, DallasToNashville()));
  units.push_back(ThereAndBack("000000000007", "Nashville/Bethlehem", 15, NashvilleToBethlehem()));
  units.push_back(ThereAndBack("000000000008", "Across Wisconsin", 6, AcrossWisconsin()));
  units.push_back(Loop("000000000009", "Minneapolis", 2, MinneapolisTour()));
  for (std::size_t i = 0; i < units.size(); ++i)
    units[i].startSeconds = static_cast<std::int64_t>(i) * 11 * 60;  // so that they don't all set out at once
  return units;
}

}  // namespace

const std::vector<DemoUnit>& DemoUnits() {
  static const std::vector<DemoUnit> units = MakeDemoUnits();
  return units;
}

std::vector<WireRecord> DemoReports(const DemoUnit& unit, std::int64_t slot) {
  assert(&unit >= &DemoUnits().front() && &unit <= &DemoUnits().back());
  const Dice dice(static_cast<std::uint64_t>(&unit - DemoUnits().data()), static_cast<std::uint64_t>(slot));
  const bool isWayBack = !unit.back.empty() && slot % 2 != 0;
  const Trip trip(isWayBack ? unit.back : unit.there, dice);
  const Millis start = (unit.startSeconds + slot * unit.slotSeconds) * kSecond;

  std::vector<WireRecord> reports;
  std::uint64_t report = 0;
  for (std::int64_t second = 0; second <= unit.slotSeconds - kShortestInterval; ++report) {
    const Trip::Moment moment = trip.At(static_cast<double>(second));
    if (const auto time = EncodePackedTime(start + second * kSecond))
      reports.push_back(Report(moment, *time, dice, report));
    second += Interval(moment, second, dice.Roll(kIntervalKey + report));
  }
  assert(IsStrictlyAscending(reports));
  return reports;
}

}  // namespace pallomir::station
