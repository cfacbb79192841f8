#include "map/ring_shapes.h"

#include <array>
#include <cstddef>

namespace pallomir {
namespace {

// A quarter of a ring and its turns by 90, 180 and 270 degrees.
template <std::size_t kSize>
Shape FullRing(const std::array<Pixel, kSize>& quarter) {
  Shape shape;
  for (int turn = 0; turn < 4; ++turn) {
    for (Pixel p : quarter) {
      for (int i = 0; i < turn; ++i) p = {-p.y, p.x};
      shape.push_back(p);
    }
  }
  return shape;
}

}  // namespace

const Shape& RingReceived() {
  static const Shape shape = FullRing<11>(
      {{{8, 0}, {8, 1}, {8, 2}, {8, 3}, {7, 4}, {6, 5}, {5, 6}, {4, 7}, {3, 8}, {2, 8}, {1, 8}}});
  return shape;
}

const Shape& RingNotReceived() {
  static const Shape shape =
      FullRing<10>({{{7, 0}, {7, 1}, {7, 2}, {7, 3}, {6, 4}, {5, 5}, {4, 6}, {3, 7}, {2, 7}, {1, 7}}});
  return shape;
}

const Shape& RingEnds() {
  static const Shape shape = FullRing<19>({{{6, 0},
                                            {6, 1},
                                            {6, 2},
                                            {6, 3},
                                            {5, 4},
                                            {4, 5},
                                            {3, 6},
                                            {2, 6},
                                            {1, 6},
                                            {5, 0},
                                            {5, 1},
                                            {5, 2},
                                            {5, 3},
                                            {4, 4},
                                            {3, 5},
                                            {2, 5},
                                            {1, 5},
                                            {4, 3},
                                            {3, 4}}});
  return shape;
}

}  // namespace pallomir
