#include "reports/nearby_points.h"

#include <algorithm>
#include <cmath>

namespace pallomir {
namespace {

constexpr std::size_t kRun = 64;    // points
constexpr std::size_t kGroup = 64;  // runs

// The list that is being found, and how near a point has to be to get into it.
class Nearest {
 public:
  Nearest(WorldPoint place, std::int32_t unitsPerPixel)
      : x_(place.x), y_(place.y), unitsPerPixel_(unitsPerPixel) {
    SetLimit(kNearbyPixels);
  }

  bool Reaches(const WorldBox& box) const {
    return box.MinX <= x_ + reach_ && box.MaxX >= x_ - reach_ && box.MinY <= y_ + reach_ &&
           box.MaxY >= y_ - reach_;
  }

  void Offer(std::size_t k, std::size_t index, const DataPoint& point) {
    const std::int64_t dx = x_ - point.x;
    const std::int64_t dy = y_ - point.y;
    if (dx > reach_ || dx < -reach_ || dy > reach_ || dy < -reach_) return;
    const auto east = static_cast<double>(dx);
    const auto south = static_cast<double>(dy);
    const double pixels = std::sqrt(east * east + south * south) / unitsPerPixel_;
    if (!(pixels < limit_)) return;
    const auto farther = std::ranges::upper_bound(found_, pixels, {}, &NearbyPoint::pixels);
    found_.insert(farther, {k, index, pixels});
    if (found_.size() > kMostNearby) found_.pop_back();
    if (found_.size() == kMostNearby) SetLimit(found_.back().pixels);
  }

  std::vector<NearbyPoint> Take() { return std::move(found_); }

 private:
  // What is farther than `reach_` along one axis is as far as the limit: a root of a square gives back what
  // was squared, and the scale is a power of two.
  void SetLimit(double pixels) {
    limit_ = pixels;
    reach_ = static_cast<std::int64_t>(std::ceil(pixels * unitsPerPixel_)) - 1;
  }

  std::int64_t x_;
  std::int64_t y_;
  std::int32_t unitsPerPixel_;
  double limit_ = 0;        // pixels
  std::int64_t reach_ = 0;  // world units
  std::vector<NearbyPoint> found_;
};

}  // namespace

NearbyPoints::Boxes NearbyPoints::BoxesOf(std::span<const DataPoint> points) {
  Boxes boxes;
  for (std::size_t begin = 0; begin < points.size(); begin += kRun) {
    const WorldBox run = BoxOf(points.subspan(begin, std::min(kRun, points.size() - begin)));
    if (boxes.runs.size() % kGroup == 0) boxes.groups.emplace_back();
    boxes.runs.push_back(run);
    boxes.groups.back().Widen(run.MinX, run.MinY);
    boxes.groups.back().Widen(run.MaxX, run.MaxY);
  }
  return boxes;
}

std::vector<NearbyPoint> NearbyPoints::Find(Tracks tracks, WorldPoint place, std::int32_t unitsPerPixel) {
  if (unitsPerPixel <= 0) return {};
  if (boxes_.size() != tracks.size()) {
    boxes_.clear();
    for (const auto& points : tracks) boxes_.push_back(BoxesOf(points));
  }
  Nearest nearest(place, unitsPerPixel);
  for (std::size_t k = 1; k <= tracks.size(); ++k) {
    const auto points = tracks[k - 1];
    const auto& [runs, groups] = boxes_[k - 1];
    for (std::size_t run = 0; run < runs.size(); ++run) {
      if (run % kGroup == 0 && !nearest.Reaches(groups[run / kGroup])) {
        run += kGroup - 1;
        continue;
      }
      if (!nearest.Reaches(runs[run])) continue;
      const std::size_t end = std::min((run + 1) * kRun, points.size());
      for (std::size_t j = run * kRun; j < end; ++j) nearest.Offer(k, j, points[j]);
    }
  }
  return nearest.Take();
}

}  // namespace pallomir
