#include "hotspots/hotspot_lists.h"

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

#include "base/number_format.h"

namespace pallomir {
namespace {

constexpr char kHotspotMenu[] = "mnuOptionsHotSpotsArray";
constexpr char kSecureHotspotMenu[] = "mnuOptionsSecureHotSpotsArray";
constexpr char kPermitted[] = "Permitted";
constexpr char kProhibited[] = "Prohibited";
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

// A longer part can't come from the editors; it is cut between two characters.
std::string Part(std::string_view text) {
  std::size_t size = std::min(text.size(), kMaxPartSize);
  while (size > 0 && size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
  return FormatInteger(static_cast<std::int64_t>(size), kLengthDigits) + std::string(text.substr(0, size));
}

std::string TagOf(const SecureHotspot& hotspot) { return hotspot.protocol + "~" + hotspot.key; }

SecureHotspot FromTag(std::string ssid, std::string_view tag) {
  const std::size_t end = std::min(tag.find('~'), tag.size());
  return {std::move(ssid), std::string(tag.substr(0, end)),
          std::string(tag.substr(std::min(end + 1, tag.size())))};
}

struct Entry {
  std::string caption;
  std::string tag;
};

void ShowList(MenuModel& menus, const char* array, const char* separator, const char* edit,
              std::vector<Entry> entries) {
  const bool isEmpty = entries.empty();
  menus.TruncateArray(array, 1);
  menus.At(array).visible = isEmpty;
  menus.At(separator).visible = !isEmpty;
  menus.At(edit).caption = isEmpty ? "Edit List (currently empty)" : "Edit List";
  std::list<MenuItem> items;
  for (Entry& entry : entries) {
    MenuItem& item = items.emplace_back();
    item.name = array;
    item.index = static_cast<int>(items.size());
    item.caption = std::move(entry.caption);
    item.tag = std::move(entry.tag);
    item.isPlainText = true;
  }
  menus.AppendToArray(array, std::move(items));
}

template <class Take>
void ForEachEntry(const MenuModel& menus, const char* array, Take take) {
  for (const MenuItem& item : menus.ArrayParent(array)->children)
    if (item.name == array && item.index > 0) take(item);
}

}  // namespace

std::vector<std::string> ParseHotspots(std::string_view stored) {
  std::vector<std::string> ssids;
  while (!stored.empty() && ssids.size() < kMaxHotspots) {
    auto ssid = TakePart(stored);
    if (!ssid) break;
    ssids.push_back(std::move(*ssid));
  }
  return ssids;
}

std::string EncodeHotspots(const std::vector<std::string>& ssids) {
  std::string stored;
  for (const std::string& ssid : ssids) stored += Part(ssid);
  return stored;
}

std::vector<SecureHotspot> ParseSecureHotspots(std::string_view stored) {
  std::vector<SecureHotspot> hotspots;
  while (!stored.empty() && hotspots.size() < kMaxHotspots) {
    auto ssid = TakePart(stored);
    const auto tag = ssid ? TakePart(stored) : std::nullopt;
    if (!tag) break;
    hotspots.push_back(FromTag(std::move(*ssid), *tag));
  }
  return hotspots;
}

std::string EncodeSecureHotspots(const std::vector<SecureHotspot>& hotspots) {
  std::string stored;
  for (const SecureHotspot& hotspot : hotspots) stored += Part(hotspot.ssid) + Part(TagOf(hotspot));
  return stored;
}

void LoadSSIDs(MenuModel& menus, std::string_view stored) {
  std::vector<Entry> entries;
  for (std::string& ssid : ParseHotspots(stored)) entries.push_back({std::move(ssid), ""});
  ShowList(menus, kHotspotMenu, "mnuOptionsMUSeparator2", "mnuOptionsHotSpotsEdit", std::move(entries));
}

void LoadSecureSSIDs(MenuModel& menus, std::string_view stored) {
  std::vector<Entry> entries;
  for (const SecureHotspot& hotspot : ParseSecureHotspots(stored))
    entries.push_back({hotspot.ssid, TagOf(hotspot)});
  ShowList(menus, kSecureHotspotMenu, "mnuOptionsMUSeparator1", "mnuOptionsSecureHotSpotsEdit",
           std::move(entries));
}

std::vector<std::string> HotspotsFromMenu(const MenuModel& menus) {
  std::vector<std::string> ssids;
  ForEachEntry(menus, kHotspotMenu, [&](const MenuItem& item) { ssids.push_back(item.caption); });
  return ssids;
}

std::vector<SecureHotspot> SecureHotspotsFromMenu(const MenuModel& menus) {
  std::vector<SecureHotspot> hotspots;
  ForEachEntry(menus, kSecureHotspotMenu,
               [&](const MenuItem& item) { hotspots.push_back(FromTag(item.caption, item.tag)); });
  return hotspots;
}

void HotSpotsChange(MenuModel& menus, std::string& mode, bool toggle) {
  const bool isProhibited = (mode == kProhibited) != toggle;
  mode = isProhibited ? kProhibited : kPermitted;
  MenuItem& header = menus.At("mnuOptionsHotSpots");
  header.caption = "Mobile Unit " + mode + " Hotspots List";
  header.tag = mode;
  const std::string other = isProhibited ? kPermitted : kProhibited;
  menus.At("mnuOptionsHotSpotsChange").caption = "Change from \"" + mode + "\" to \"" + other + "\" List";
}

}  // namespace pallomir
