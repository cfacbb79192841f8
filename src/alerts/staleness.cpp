#include "alerts/staleness.h"

namespace pallomir {

std::optional<Millis> StaleAge(int choice) {
  constexpr Millis kAges[] = {kHour, 4 * kHour, 8 * kHour, kDay};
  if (choice < 1 || choice > 4) return std::nullopt;
  return kAges[choice - 1];
}

bool IsStale(std::optional<Millis> newestUtc, Millis nowUtc, int choice) {
  const auto age = StaleAge(choice);
  return newestUtc && age && nowUtc - *newestUtc > *age;
}

}  // namespace pallomir
