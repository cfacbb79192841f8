#pragma once

#include <cstdint>
#include <vector>

#include "station/demo/path.h"

namespace pallomir::station {

/// Chance without a state: the same unit, trip and key always give the same roll.
class Dice {
 public:
  Dice(std::uint64_t unit, std::uint64_t trip);

  /// From 0 up to, not including, 1.
  double Roll(std::uint64_t key) const;
  double Between(double low, double high, std::uint64_t key) const { return low + (high - low) * Roll(key); }

 private:
  std::uint64_t seed_;
};

/// One drive along a path, from standing at its start to standing at its end. The vehicle keeps to speed
/// limits, brakes for bends, waits at crossings and stops where the path says so. Times are in seconds since
/// the trip began.
class Trip {
 public:
  /// The path, of at least two corners, must outlive the trip.
  Trip(const Path& path, const Dice& dice);

  struct Moment {
    Place place;
    double speed = 0;        ///< metres a second
    double heading = 0;      ///< compass degrees; while it stands, those of the way it came
    double standsUntil = 0;  ///< when it moves on; the moment itself while it moves, infinity at the end
  };

  /// Where the vehicle is at any moment. Before the trip it stands at the start, afterwards at the end.
  Moment At(double seconds) const;

  /// Seconds until it reaches the end.
  double Duration() const { return passages_.back().arrival; }

 private:
  struct Passage {
    double arrival = 0;
    double departure = 0;
    double speed = 0;
  };

  void ChooseSpeedsAndStops(const Dice& dice);
  void LimitAcceleration();
  void KeepTime();

  const Path& path_;
  std::vector<Passage> passages_;  ///< one for each vertex, in order of time
};

}  // namespace pallomir::station
