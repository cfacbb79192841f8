#include "vector_math.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "map/projection.h"

namespace pallomir::bench {

void LatitudesByVectorMath(std::span<DataPoint> rows) {
  static std::vector<double> lats(720);
  lats.resize(rows.size());
  const std::size_t count = rows.size();
  double* const y = lats.data();
  for (std::size_t i = 0; i < count; ++i) y[i] = rows[i].x / kPositionUnitsPerDegree * kPi / 180;
  for (std::size_t i = 0; i < count; ++i)
    y[i] = (0.5 - std::log(std::tan(y[i]) + 1 / std::cos(y[i])) / kTwoPi) * kWorldSize;
  for (std::size_t i = 0; i < count; ++i) rows[i].y = static_cast<std::int32_t>(std::nearbyint(y[i]));
}

std::uint64_t XorOfWords(const std::uint8_t* bytes, std::size_t size) {
  std::uint64_t sum = 0;
  for (std::size_t at = 0; at + 8 <= size; at += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes + at, 8);
    sum ^= word;
  }
  return sum;
}

}  // namespace pallomir::bench
