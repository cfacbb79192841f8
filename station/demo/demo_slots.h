#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <utility>
#include <vector>

#include "station/demo/demo_units.h"

namespace pallomir::station {

/// A cache of the slots that were read last, so that the same slots are not made again for every packet of
/// clients that read different days.
class DemoSlots {
 public:
  using Maker = std::function<std::vector<WireRecord>(const DemoUnit&, std::int64_t slot)>;

  /// Keeps at most `room` reports, but always the slot that was asked for last. `make` makes a slot's
  /// reports, strictly ascending in time.
  DemoSlots(Maker make, std::size_t room) : make_(std::move(make)), room_(room) {}

  /// A unit's reports in one slot, valid until the next call.
  const std::vector<WireRecord>& Reports(const DemoUnit& unit, std::int64_t slot);

 private:
  using Key = std::pair<const DemoUnit*, std::int64_t>;
  struct Kept {
    Key key;
    std::vector<WireRecord> reports;
  };

  Maker make_;
  std::size_t room_;
  std::size_t held_ = 0;  ///< reports in all of `kept_`
  std::list<Kept> kept_;  ///< the slot read last comes first
  std::map<Key, std::list<Kept>::iterator> places_;
};

}  // namespace pallomir::station
