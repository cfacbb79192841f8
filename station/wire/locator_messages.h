#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// What one datagram can name; it bounds what a stranger can make the station look up.
inline constexpr std::size_t kMaxUnitsPerRequest = kMostUnitsPerRequest;

/// The unit IDs of a locator request: the short check form of the rest, then "D" and 12-character IDs. No IDs
/// at all are a valid question; anything malformed gives nothing.
std::optional<std::vector<std::string>> ParseLocatorRequest(ByteView datagram);

/// "D" and the IDs behind their check form: what a client sends.
Bytes LocatorRequest(const std::vector<std::string>& unitIds);

/// The reply that names one Base Server: `address` is the IPv4 address, most significant octet first.
Bytes LocatorReply(std::uint32_t address, std::uint16_t port);

/// The reply for units that no Base Server knows.
Bytes EmptyLocatorReply();

}  // namespace pallomir::station
