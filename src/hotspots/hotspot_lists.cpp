#include "hotspots/hotspot_lists.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/number_format.h"
#include "ui/box_edit.h"

namespace pallomir {
namespace {

constexpr std::size_t kLengthDigits = 2;
constexpr std::size_t kMaxPartSize = 99;  // what two digits can tell

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes one part with its length from the front.
std::optional<std::string> TakePart(std::string_view& text) {
  if (text.size() < kLengthDigits || !IsDigit(text[0]) || !IsDigit(text[1])) return std::nullopt;
  const auto length = static_cast<std::size_t>((text[0] - '0') * 10 + (text[1] - '0'));
  if (text.size() - kLengthDigits < length) return std::nullopt;
  std::string part(text.substr(kLengthDigits, length));
  text.remove_prefix(kLengthDigits + length);
  return part;
}

// A longer text can't come from the editors; it is cut between two characters.
std::string WithLength(std::string_view text) {
  const std::size_t size = ClampSpan(text, {kMaxPartSize, kMaxPartSize}).begin;
  return FormatInteger(static_cast<std::int64_t>(size), kLengthDigits) + std::string(text.substr(0, size));
}

/// A network as it is stored: its name, and what stands beside that.
struct Entry {
  std::string ssid;
  std::string second;
};

std::vector<Entry> TakeEntries(std::string_view stored, bool hasSecond) {
  std::vector<Entry> entries;
  while (!stored.empty() && entries.size() < kMaxHotspots) {
    auto ssid = TakePart(stored);
    auto second = ssid && hasSecond ? TakePart(stored) : std::string();
    if (!ssid || !second) break;
    entries.push_back({std::move(*ssid), std::move(*second)});
  }
  return entries;
}

}  // namespace

std::vector<std::string> ParseHotspots(std::string_view stored) {
  std::vector<std::string> ssids;
  for (Entry& entry : TakeEntries(stored, false)) ssids.push_back(std::move(entry.ssid));
  return ssids;
}

std::string EncodeHotspots(const std::vector<std::string>& ssids) {
  std::string stored;
  for (const std::string& ssid : ssids) stored += WithLength(ssid);
  return stored;
}

std::vector<SecureHotspot> ParseSecureHotspots(std::string_view stored) {
  std::vector<SecureHotspot> hotspots;
  for (Entry& entry : TakeEntries(stored, true))
    hotspots.push_back(SecureHotspotOf(std::move(entry.ssid), entry.second));
  return hotspots;
}

std::string EncodeSecureHotspots(const std::vector<SecureHotspot>& hotspots) {
  std::string stored;
  for (const SecureHotspot& hotspot : hotspots)
    stored += WithLength(hotspot.ssid) + WithLength(ProtocolAndKey(hotspot));
  return stored;
}

std::string ProtocolAndKey(const SecureHotspot& hotspot) { return hotspot.protocol + "~" + hotspot.key; }

SecureHotspot SecureHotspotOf(std::string ssid, std::string_view protocolAndKey) {
  const std::size_t end = std::min(protocolAndKey.find('~'), protocolAndKey.size());
  const std::size_t key = std::min(end + 1, protocolAndKey.size());
  return {std::move(ssid), std::string(protocolAndKey.substr(0, end)),
          std::string(protocolAndKey.substr(key))};
}

}  // namespace pallomir
