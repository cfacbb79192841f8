#pragma once

#include <cstddef>
#include <span>

namespace pallomir::station {

/// A reader that has taken everything written so far must not take half an answer for the whole. It does when
/// its last byte ends a packet, or lies in the 8 bytes behind one (a header cut short, or one without its
/// payload). So no write may end there, except the one that ends the answer.
inline constexpr std::size_t kForbiddenBehindPacket = 8;

/// How many bytes to write next. `packetSizes` are the packets waiting, the first of them included whole even
/// where `alreadyWritten` of its bytes are gone; `isWhole` says that nothing follows them. About `limit`, up
/// to 9 bytes more where nothing smaller will do. Zero when more packets must be there first.
///
/// Needs packets longer than 17 bytes, as all with a record are.
std::size_t PlanWrite(std::span<const std::size_t> packetSizes, std::size_t alreadyWritten, bool isWhole,
                      std::size_t limit);

}  // namespace pallomir::station
