#pragma once

#include <cstdint>

#include "base/bytes.h"

namespace pallomir {

/// The 32-bit rotate-and-XOR check code of the locator and of packets. For an empty text it is its start
/// value.
std::uint32_t CheckCode(ByteView text);

/// The ways to compute it that this machine knows: the plain one first, the one that is used last.
using CheckCodeKernel = std::uint32_t (*)(ByteView text);
std::span<const CheckCodeKernel> CheckCodeKernels();

/// The code's four bytes, then the length in two: what the locator's datagrams begin with. Only the low 16
/// bits of the length are kept.
Bytes ShortCheckForm(ByteView text);

/// The code's four bytes, then the length in four: the header of a packet.
Bytes LongCheckForm(ByteView text);

inline constexpr std::size_t kShortCheckSize = 6;
inline constexpr std::size_t kLongCheckSize = 8;

}  // namespace pallomir
