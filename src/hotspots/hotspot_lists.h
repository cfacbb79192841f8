#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

/// The Wi-Fi networks that the mobile units may use. Lengths are bytes of UTF-8, as on the air: a name (SSID)
/// has at most 32, a key at most 64.
inline constexpr std::size_t kMaxSsidSize = 32;
inline constexpr std::size_t kMaxKeySize = 64;

/// A list holds at most this many entries.
inline constexpr std::size_t kMaxHotspots = 9999;

/// A network with its key. What the mobile units know are the protocols of kHotspotProtocols; a stored one
/// may be any other text.
struct SecureHotspot {
  std::string ssid;
  std::string protocol;
  std::string key;
  bool operator==(const SecureHotspot&) const = default;
};

inline constexpr std::string_view kHotspotProtocols[] = {"WEP", "WPA", "WPA-E", "WPA2", "WPA2-E"};
inline constexpr std::string_view kDefaultHotspotProtocol = "WPA2";

/// Reads a stored list: per network two decimal digits of length and the name. It ends before the first entry
/// that is damaged: a length that is no number, or an end that is missing.
std::vector<std::string> ParseHotspots(std::string_view stored);
std::string EncodeHotspots(const std::vector<std::string>& ssids);

/// The same with two such parts per network: the name; then protocol, "~" and key. The first "~" counts.
std::vector<SecureHotspot> ParseSecureHotspots(std::string_view stored);
std::string EncodeSecureHotspots(const std::vector<SecureHotspot>& hotspots);

/// What stands beside the name of a secure network: protocol, "~" and key. A text without a "~" is all
/// protocol; once the list is changed it is stored with one.
std::string ProtocolAndKey(const SecureHotspot& hotspot);
SecureHotspot SecureHotspotOf(std::string ssid, std::string_view protocolAndKey);

}  // namespace pallomir
