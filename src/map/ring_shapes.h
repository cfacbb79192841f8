#pragma once

#include <cstdint>
#include <vector>

namespace pallomir {

/// A pixel at the tiles' zoom, or the way from one to another.
struct Pixel {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

/// The pixels of a ring, as ways from its middle.
using Shape = std::vector<Pixel>;

const Shape& RingReceived();     ///< around a point sent and received
const Shape& RingNotReceived();  ///< around a point sent and not received
const Shape& RingEnds();         ///< around the first and the last point of a unit

}  // namespace pallomir
