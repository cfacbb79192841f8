#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "station/demo/demo_slots.h"
#include "station/store/position_source.h"

namespace pallomir::station {

/// The demo units as a source. It ends at the present moment, so that new reports appear as time goes by.
class DemoSource : public PositionSource {
 public:
  /// `utcNow` is the time of day.
  explicit DemoSource(std::function<Millis()> utcNow);

  bool Knows(std::string_view unitId) override;
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override;

 private:
  std::function<Millis()> utcNow_;
  DemoSlots slots_;
};

}  // namespace pallomir::station
