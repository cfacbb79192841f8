#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/data_point.h"

/// Yardsticks that are compiled for this machine's vectors, and with the liberties that the program itself
/// must not take.
namespace pallomir::bench {

/// World Y of each row's latitude in x, by the compiler's vector math, into y. Not exact.
void LatitudesByVectorMath(std::span<DataPoint> rows);

/// Reads `size` bytes.
std::uint64_t XorOfWords(const std::uint8_t* bytes, std::size_t size);

}  // namespace pallomir::bench
