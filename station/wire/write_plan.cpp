#include "station/wire/write_plan.h"

#include <algorithm>
#include <cassert>

namespace pallomir::station {

std::size_t PlanWrite(std::span<const std::size_t> packetSizes, std::size_t alreadyWritten, bool isWhole,
                      std::size_t limit) {
  assert(packetSizes.empty() ? alreadyWritten == 0 : alreadyWritten < packetSizes.front());
  // Shorter packets may leave no place for a write to end.
  assert(std::ranges::all_of(packetSizes,
                             [](std::size_t size) { return size > 2 * kForbiddenBehindPacket + 1; }));
  std::size_t total = 0;
  for (const std::size_t size : packetSizes) total += size;
  const std::size_t wanted = alreadyWritten + limit;
  if (isWhole && wanted >= total) return total - alreadyWritten;

  // `before` is the end of the last packet that ends at or before the write's end.
  std::size_t end = wanted < total ? wanted : total;
  std::size_t before = 0;
  for (const std::size_t size : packetSizes) {
    if (before + size > end) break;
    before += size;
  }
  if (end > before + kForbiddenBehindPacket) return end - alreadyWritten;
  if (before > alreadyWritten + 1) return before - 1 - alreadyWritten;
  const std::size_t beyond = before + kForbiddenBehindPacket + 1;
  return beyond <= total && beyond > alreadyWritten ? beyond - alreadyWritten : 0;
}

}  // namespace pallomir::station
