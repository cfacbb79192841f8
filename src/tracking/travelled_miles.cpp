#include "tracking/travelled_miles.h"

#include <cmath>

#include "map/projection.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pallomir {
namespace {

// The processor takes two roots in the time of one, but the compiler does not ask it to.
inline void TakeRoots(double (&pair)[2]) {
#if defined(__SSE2__)
  _mm_storeu_pd(pair, _mm_sqrt_pd(_mm_loadu_pd(pair)));
#else
  for (double& value : pair) value = std::sqrt(value);
#endif
}

}  // namespace

void FillTravelledMiles(std::span<const DataPoint> points, double* miles, std::size_t from) {
  if (from == 0 && !points.empty()) miles[from++] = 0;
  if (from >= points.size()) return;
  const double* const cosines = CosLatTable().data();
  double sum = miles[from - 1];
  double x = points[from - 1].x;
  double y = points[from - 1].y;
  const auto squareTo = [&x, &y](const DataPoint& point) {
    const double dx = point.x - x;
    const double dy = point.y - y;
    x = point.x;
    y = point.y;
    return dx * dx + dy * dy;
  };
  for (; from + 2 <= points.size(); from += 2) {
    double pair[2] = {squareTo(points[from]), squareTo(points[from + 1])};
    TakeRoots(pair);
    miles[from] = sum += pair[0] * kMilesPerWorldUnit * cosines[CosLatIndex(points[from].y)];
    miles[from + 1] = sum += pair[1] * kMilesPerWorldUnit * cosines[CosLatIndex(points[from + 1].y)];
  }
  if (from == points.size()) return;
  const DataPoint& before = points[from - 1];
  miles[from] = sum + GroundDistanceMiles(before.x, before.y, points[from].x, points[from].y);
}

}  // namespace pallomir
