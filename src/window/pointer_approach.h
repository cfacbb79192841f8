#pragma once

#include <limits>

#include "platform/geometry.h"

namespace pallomir {

/// Whether a pointer is on its way to something: each time it is seen it is nearer than ever before.
class PointerApproach {
 public:
  /// Something to go to has appeared.
  void Begin() { least_ = std::numeric_limits<double>::infinity(); }
  bool IsOnTheWay(int x, int y, const PixelRect& goal);

 private:
  double least_ = 0;  // distance, pixels
};

}  // namespace pallomir
