#include "window/pointer_approach.h"

#include <algorithm>
#include <cmath>

namespace pallomir {
namespace {

constexpr double kUnsteadyHand = 4;  // pixels

// How far `at` lies outside of `length` pixels from `start` on.
int Outside(int at, int start, int length) { return std::max({0, start - at, at - (start + length - 1)}); }

}  // namespace

bool PointerApproach::IsOnTheWay(int x, int y, const PixelRect& goal) {
  const double distance = std::hypot(Outside(x, goal.left, goal.width), Outside(y, goal.top, goal.height));
  const bool isNearer = distance <= least_ + kUnsteadyHand;
  least_ = std::min(least_, distance);
  return isNearer;
}

}  // namespace pallomir
