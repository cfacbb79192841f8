#include "station/demo/demo_source.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "base/packed_time.h"

namespace pallomir::station {
namespace {

// 32 MB: all units for 140 clients, each reading a different day.
constexpr std::size_t kKeptReports = 2'000'000;

const DemoUnit* FindUnit(std::string_view id) {
  const auto unit = std::ranges::find(DemoUnits(), id, &DemoUnit::id);
  return unit == DemoUnits().end() ? nullptr : &*unit;
}

std::int64_t SlotAt(const DemoUnit& unit, Millis utc) {
  return (utc / kSecond - unit.startSeconds) / unit.slotSeconds;
}

}  // namespace

DemoSource::DemoSource(std::function<Millis()> utcNow)
    : utcNow_(std::move(utcNow)), slots_(DemoReports, kKeptReports) {}

bool DemoSource::Knows(std::string_view unitId) { return FindUnit(unitId) != nullptr; }

std::vector<WireRecord> DemoSource::Read(std::string_view unitId, TimeWindow window, std::size_t limit) {
  const DemoUnit* unit = FindUnit(unitId);
  window.until = std::min(window.until, utcNow_());
  const auto packed = PackWindow(window);
  if (unit == nullptr || !packed) return {};

  std::vector<WireRecord> found;
  const std::int64_t last = SlotAt(*unit, *DecodePackedTime(packed->last));
  for (auto number = SlotAt(*unit, *DecodePackedTime(packed->first)); number <= last; ++number) {
    assert(found.size() <= limit);
    const auto inside = RecordsInside(slots_.Reports(*unit, number), *packed);
    const std::size_t room = limit - found.size();
    found.insert(found.end(), inside.begin(),
                 inside.begin() + static_cast<std::ptrdiff_t>(std::min(room, inside.size())));
    if (found.size() == limit) break;
  }
  return found;
}

}  // namespace pallomir::station
