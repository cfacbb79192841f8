#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// A map from another server that the map page shows in place of its own.
struct OnlineMap {
  std::string url;          ///< http or https; {z}, {x} and {y} stand for a tile, {s} for a, b or c
  std::string attribution;  ///< the credit that its makers want shown with it
};

/// Reads "URL attribution". Nothing where the address is not one of tiles, has characters that an HTTP header
/// or JSON would need escaped, or comes without an attribution.
std::optional<OnlineMap> ParseOnlineMap(std::string_view text);

/// Where a page may load pictures from when it shows `map`, each behind a space: the host of its address, or
/// one for each of the servers that {s} stands for. Empty without a map.
std::string PictureHosts(const std::optional<OnlineMap>& map);

}  // namespace pallomir::station
