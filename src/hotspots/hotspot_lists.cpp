#include "hotspots/hotspot_lists.h"

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

#include "base/number_format.h"
#include "ui/box_edit.h"

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

// A longer text can't come from the editors; it is cut between two characters.
std::string WithLength(std::string_view text) {
  const std::size_t size = ClampSpan(text, {kMaxPartSize, kMaxPartSize}).begin;
  return FormatInteger(static_cast<std::int64_t>(size), kLengthDigits) + std::string(text.substr(0, size));
}

/// A network as the menus hold it: name and tag.
struct Entry {
  std::string caption;
  std::string tag;
};

std::vector<Entry> TakeEntries(std::string_view stored, bool hasTags) {
  std::vector<Entry> entries;
  while (!stored.empty() && entries.size() < kMaxHotspots) {
    auto caption = TakePart(stored);
    auto tag = caption && hasTags ? TakePart(stored) : std::string();
    if (!caption || !tag) break;
    entries.push_back({std::move(*caption), std::move(*tag)});
  }
  return entries;
}

std::string TagOf(const SecureHotspot& hotspot) { return hotspot.protocol + "~" + hotspot.key; }

SecureHotspot FromEntry(const std::string& caption, std::string_view tag) {
  const std::size_t end = std::min(tag.find('~'), tag.size());
  return {caption, std::string(tag.substr(0, end)), std::string(tag.substr(std::min(end + 1, tag.size())))};
}

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
  for (Entry& entry : TakeEntries(stored, false)) ssids.push_back(std::move(entry.caption));
  return ssids;
}

std::string EncodeHotspots(const std::vector<std::string>& ssids) {
  std::string stored;
  for (const std::string& ssid : ssids) stored += WithLength(ssid);
  return stored;
}

std::vector<SecureHotspot> ParseSecureHotspots(std::string_view stored) {
  std::vector<SecureHotspot> hotspots;
  for (const Entry& entry : TakeEntries(stored, true))
    hotspots.push_back(FromEntry(entry.caption, entry.tag));
  return hotspots;
}

std::string EncodeSecureHotspots(const std::vector<SecureHotspot>& hotspots) {
  std::string stored;
  for (const SecureHotspot& hotspot : hotspots)
    stored += WithLength(hotspot.ssid) + WithLength(TagOf(hotspot));
  return stored;
}

void LoadSSIDs(MenuModel& menus, std::string_view stored) {
  ShowList(menus, kHotspotMenu, "mnuOptionsMUSeparator2", "mnuOptionsHotSpotsEdit",
           TakeEntries(stored, false));
}

void LoadSecureSSIDs(MenuModel& menus, std::string_view stored) {
  ShowList(menus, kSecureHotspotMenu, "mnuOptionsMUSeparator1", "mnuOptionsSecureHotSpotsEdit",
           TakeEntries(stored, true));
}

std::vector<std::string> HotspotsFromMenu(const MenuModel& menus) {
  std::vector<std::string> ssids;
  ForEachEntry(menus, kHotspotMenu, [&](const MenuItem& item) { ssids.push_back(item.caption); });
  return ssids;
}

std::vector<SecureHotspot> SecureHotspotsFromMenu(const MenuModel& menus) {
  std::vector<SecureHotspot> hotspots;
  ForEachEntry(menus, kSecureHotspotMenu,
               [&](const MenuItem& item) { hotspots.push_back(FromEntry(item.caption, item.tag)); });
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
