#include "alerts/staleness.h"

#include "tracking/data_age.h"

namespace pallomir {
namespace {

// From which age on data are stale; nothing where they never are.
std::optional<Millis> StaleAge(int choice) {
  constexpr Millis kAges[] = {kHour, 4 * kHour, 8 * kHour, kDay};
  if (choice < 1 || choice > 4) return std::nullopt;
  return kAges[choice - 1];
}

}  // namespace

bool IsStale(std::optional<Millis> newestUtc, Millis nowUtc, int choice) {
  const auto age = StaleAge(choice);
  return newestUtc && age && nowUtc - *newestUtc > *age;
}

bool IsUnitStale(const UnitBook& units, const PointStore& points, const std::string& unitId, Millis nowUtc,
                 int choice) {
  const std::size_t k = units.EnabledPositionOf(unitId);
  return k > 0 && k <= points.UnitCount() && IsStale(NewestOfUnit(points, k, nowUtc), nowUtc, choice);
}

}  // namespace pallomir
