#include "commands/hotspot_menus.h"

#include <list>
#include <utility>

#include "commands/menus.h"

namespace pallomir {
namespace {

constexpr char kPermitted[] = "Permitted";
constexpr char kProhibited[] = "Prohibited";

/// The entries that belong to one list.
struct ListMenu {
  Command entries;
  Command separator;
  Command edit;
};
constexpr ListMenu kHotspots{Command::kHotspot, Command::kHotspotLine, Command::kEditHotspots};
constexpr ListMenu kSecureHotspots{Command::kSecureHotspot, Command::kSecureHotspotLine,
                                   Command::kEditSecureHotspots};

void ShowList(MenuModel& menus, const ListMenu& list, std::list<MenuItem> items) {
  const bool isEmpty = items.empty();
  menus.TruncateArray(list.entries, 1);
  menus.At(list.entries).visible = isEmpty;
  menus.At(list.separator).visible = !isEmpty;
  menus.At(list.edit).caption = isEmpty ? "Edit List (currently empty)" : "Edit List";
  menus.AppendToArray(list.entries, std::move(items));
}

int NextIndex(const std::list<MenuItem>& items) { return static_cast<int>(items.size()) + 1; }

}  // namespace

void LoadSSIDs(MenuModel& menus, std::string_view stored) {
  std::list<MenuItem> items;
  for (std::string& ssid : ParseHotspots(stored))
    items.push_back(UserEntry(menus, Command::kHotspot, NextIndex(items), std::move(ssid)));
  ShowList(menus, kHotspots, std::move(items));
}

void LoadSecureSSIDs(MenuModel& menus, std::string_view stored) {
  std::list<MenuItem> items;
  for (const SecureHotspot& hotspot : ParseSecureHotspots(stored)) {
    items.push_back(UserEntry(menus, Command::kSecureHotspot, NextIndex(items), hotspot.ssid));
    items.back().tag = ProtocolAndKey(hotspot);
  }
  ShowList(menus, kSecureHotspots, std::move(items));
}

std::vector<std::string> HotspotsFromMenu(const MenuModel& menus) {
  std::vector<std::string> ssids;
  menus.ForEach(Command::kHotspot, [&](const MenuItem& item) {
    if (item.index > 0) ssids.push_back(item.caption);
  });
  return ssids;
}

std::vector<SecureHotspot> SecureHotspotsFromMenu(const MenuModel& menus) {
  std::vector<SecureHotspot> hotspots;
  menus.ForEach(Command::kSecureHotspot, [&](const MenuItem& item) {
    if (item.index > 0) hotspots.push_back(SecureHotspotOf(item.caption, item.tag));
  });
  return hotspots;
}

void HotSpotsChange(MenuModel& menus, std::string& mode, bool toggle) {
  const bool isProhibited = (mode == kProhibited) != toggle;
  mode = isProhibited ? kProhibited : kPermitted;
  MenuItem& header = menus.At(Command::kHotspotList);
  header.caption = "Mobile Unit " + mode + " Hotspots List";
  header.tag = mode;
  const std::string other = isProhibited ? kPermitted : kProhibited;
  menus.At(Command::kChangeHotspotMode).caption = "Change from \"" + mode + "\" to \"" + other + "\" List";
}

}  // namespace pallomir
