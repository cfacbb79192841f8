#include "tracking/travelled_miles.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "map/projection.h"

namespace pallomir {

void FillTravelledMiles(std::span<const DataPoint> points, double* miles, std::size_t from) {
  if (from == 0 && !points.empty()) miles[from++] = 0;
  // Roots first and sums after: only the sums wait for each other.
  constexpr std::size_t kBlock = 128;
  std::array<double, kBlock> roots;
  const std::array<double, 1025>& cosines = CosLatTable();
  while (from < points.size()) {
    const std::size_t count = std::min(kBlock, points.size() - from);
    const DataPoint* const point = points.data() + from;
    for (std::size_t i = 0; i < count; ++i) {
      const double dx = static_cast<double>(point[i].x) - point[i - 1].x;
      const double dy = static_cast<double>(point[i].y) - point[i - 1].y;
      roots[i] = std::sqrt(dx * dx + dy * dy);
    }
    double sum = miles[from - 1];
    for (std::size_t i = 0; i < count; ++i) {
      sum += roots[i] * kMilesPerWorldUnit * cosines[CosLatIndex(point[i].y)];
      miles[from + i] = sum;
    }
    from += count;
  }
}

}  // namespace pallomir
