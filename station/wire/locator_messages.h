#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// As many as one datagram can name. It bounds what a stranger can make the station look up.
inline constexpr std::size_t kMaxUnitsPerRequest = kMostUnitsPerRequest;

/// Reads the unit IDs of a locator request: the short check form of what follows, "D", and 12-character IDs.
/// A request without IDs is valid. Nothing for a malformed one.
std::optional<std::vector<std::string>> ParseLocatorRequest(ByteView datagram);

/// The request that a client sends for these units, as above.
Bytes LocatorRequest(const std::vector<std::string>& unitIds);

/// The reply that names one Base Server. `address` has the first octet of the IPv4 address in its highest
/// byte.
Bytes LocatorReply(std::uint32_t address, std::uint16_t port);

/// The reply if no Base Server knows any of the units.
Bytes EmptyLocatorReply();

}  // namespace pallomir::station
