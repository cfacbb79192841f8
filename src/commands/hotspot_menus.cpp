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

void HandleHotspotCommands(CommandHandlers& handlers, HotspotRoom& room) {
  handlers.Set(Command::kEditHotspots, [&room](int) { room.Edit(); });
  handlers.Set(Command::kEditSecureHotspots, [&room](int) { room.EditSecure(); });
  handlers.Set(Command::kChangeHotspotMode, [&room](int) { room.HotSpotsChange(true); });
}

void ShowHotspots(MenuModel& menus, const HotspotRoom& room) {
  LoadSSIDs(menus, room.Hotspots());
  LoadSecureSSIDs(menus, room.SecureHotspots());
  ShowHotspotMode(menus, room.IsProhibited());
}

void LoadSSIDs(MenuModel& menus, const std::vector<std::string>& ssids) {
  std::list<MenuItem> items;
  for (const std::string& ssid : ssids)
    items.push_back(UserEntry(menus, Command::kHotspot, NextIndex(items), ssid));
  ShowList(menus, kHotspots, std::move(items));
}

void LoadSecureSSIDs(MenuModel& menus, const std::vector<SecureHotspot>& hotspots) {
  std::list<MenuItem> items;
  for (const SecureHotspot& hotspot : hotspots) {
    items.push_back(UserEntry(menus, Command::kSecureHotspot, NextIndex(items), hotspot.ssid));
    items.back().tag = ProtocolAndKey(hotspot);
  }
  ShowList(menus, kSecureHotspots, std::move(items));
}

void ShowHotspotMode(MenuModel& menus, bool isProhibited) {
  const std::string mode = isProhibited ? kProhibited : kPermitted;
  const std::string other = isProhibited ? kPermitted : kProhibited;
  MenuItem& header = menus.At(Command::kHotspotList);
  header.caption = "Mobile Unit " + mode + " Hotspots List";
  header.tag = mode;
  menus.At(Command::kChangeHotspotMode).caption = "Change from \"" + mode + "\" to \"" + other + "\" List";
}

}  // namespace pallomir
