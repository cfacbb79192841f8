#include "oracles/literal_nearby.h"

#include <cmath>

namespace pallomir::oracles {

std::vector<NearbyPoint> LiteralNearby(NearbyPoints::Tracks tracks, WorldPoint place,
                                       std::int32_t unitsPerPixel) {
  std::vector<NearbyPoint> list;
  for (std::size_t k = 1; k <= tracks.size(); ++k) {
    for (std::size_t j = 0; j < tracks[k - 1].size(); ++j) {
      const DataPoint& point = tracks[k - 1][j];
      const auto dx = static_cast<double>(std::int64_t{place.x} - point.x);
      const auto dy = static_cast<double>(std::int64_t{place.y} - point.y);
      const double d = std::sqrt(dx * dx + dy * dy) / unitsPerPixel;
      if (d >= 50) continue;
      if (list.size() < 10) list.push_back({0, 0, 2147483647});
      std::size_t at = 0;
      while (at < list.size() && list[at].pixels <= d) ++at;
      if (at == list.size()) continue;
      for (std::size_t i = list.size() - 1; i > at; --i) list[i] = list[i - 1];
      list[at] = {k, j, d};
    }
  }
  return list;
}

}  // namespace pallomir::oracles
