#pragma once

#include <cstddef>
#include <span>

namespace pallomir::station {

/// A client that has read everything written so far must not mistake half an answer for the whole. It would
/// if its last byte ended a packet or were one of the 8 bytes after it (the next header, in part or without
/// its payload). So no write may end there, except the one that ends the answer.
inline constexpr std::size_t kForbiddenBehindPacket = 8;

/// How many bytes to write next, about `limit`; up to 9 bytes more if nothing less will do. Zero if the next
/// packet must be there first.
///
/// `packetSizes` are the sizes in bytes of the packets that wait, each longer than 17 bytes, as all packets
/// with a record are. `alreadyWritten` bytes of the first one, and not all of it, have been written.
/// `isWhole` says that the answer ends with the last one.
std::size_t PlanWrite(std::span<const std::size_t> packetSizes, std::size_t alreadyWritten, bool isWhole,
                      std::size_t limit);

}  // namespace pallomir::station
