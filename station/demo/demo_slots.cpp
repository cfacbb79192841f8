#include "station/demo/demo_slots.h"

#include <cassert>

namespace pallomir::station {

const std::vector<WireRecord>& DemoSlots::Reports(const DemoUnit& unit, std::int64_t slot) {
  const Key key{&unit, slot};
  if (const auto place = places_.find(key); place != places_.end()) {
    kept_.splice(kept_.begin(), kept_, place->second);
    return kept_.front().reports;
  }
  kept_.push_front({key, make_(unit, slot)});
  places_[key] = kept_.begin();
  held_ += kept_.front().reports.size();
  while (held_ > room_ && kept_.size() > 1) {
    held_ -= kept_.back().reports.size();
    places_.erase(kept_.back().key);
    kept_.pop_back();
  }
  assert(places_.size() == kept_.size());
  assert(held_ <= room_ || kept_.size() == 1);
  return kept_.front().reports;
}

}  // namespace pallomir::station
