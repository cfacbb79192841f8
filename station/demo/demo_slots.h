#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <utility>
#include <vector>

#include "station/demo/demo_units.h"

namespace pallomir::station {

/// Keeps the reports of the slots that were read last, so that clients who page through different days don't
/// have the same slots made for each page.
class DemoSlots {
 public:
  using Maker = std::function<std::vector<WireRecord>(const DemoUnit&, std::int64_t slot)>;

  /// Keeps at most `room` reports, and always those asked for last.
  DemoSlots(Maker make, std::size_t room) : make_(std::move(make)), room_(room) {}

  /// Valid until the next call.
  const std::vector<WireRecord>& Reports(const DemoUnit& unit, std::int64_t slot);

 private:
  using Key = std::pair<const DemoUnit*, std::int64_t>;
  struct Kept {
    Key key;
    std::vector<WireRecord> reports;
  };

  Maker make_;
  std::size_t room_;
  std::size_t held_ = 0;
  std::list<Kept> kept_;  ///< the one read last first
  std::map<Key, std::list<Kept>::iterator> places_;
};

}  // namespace pallomir::station
