#include "commands/zone_menu.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <span>
#include <string>
#include <utility>

namespace pallomir {
namespace {

constexpr int kFirstIdentifier = 0x2000;
constexpr ZoneOrdinal kIdentifierMask = 0x1FFF;
constexpr ZoneOrdinal kIdentifiersOfZone = 8;

// What the five entries of a zone are counted from its first identifier.
enum EntryOffset { kHeaderAt, kLineAt, kAddAt, kDeleteAt, kEditAt, kZoomAt, kBeenAt, kZoneAt };

int IdentifierOf(ZoneOrdinal zone, EntryOffset offset) {
  const auto counted = static_cast<int>(zone * kIdentifiersOfZone & kIdentifierMask);
  return (counted | kFirstIdentifier) + offset;
}

std::string LabelAt(int depth) { return depth == 1 ? "Zone" : "Subzone"; }

// "Alerted Zone".
std::string KindAndLabel(const ZoneTree& tree, int depth) {
  return std::string(NameOf(tree.KindAt(depth))) + " " + LabelAt(depth);
}

MenuItem MakeItem(Command command, ZoneOrdinal zone, EntryOffset offset, std::string caption) {
  MenuItem item;
  item.command = command;
  item.index = static_cast<int>(zone);
  item.identifier = IdentifierOf(zone, offset);
  item.caption = std::move(caption);
  return item;
}

void AddMenuItem(MenuItem& menu, MenuItem item, bool enabled = true) {
  item.enabled = enabled;
  menu.children.push_back(std::move(item));
}

// No toolkit shows ten thousand entries of a menu at once, and nobody finds one among them: more siblings
// than these stand in groups of a hundred, the groups in groups where there are too many of them.
constexpr std::size_t kMostSiblings = 500;
constexpr std::size_t kGroupSize = 100;

MenuItem AddZone(const ZoneMenuState& state, ZoneOrdinal zone);
MenuItem AddGroup(const ZoneMenuState& state, std::span<const ZoneOrdinal> zones);

// The entries of siblings: their own, or groups of them.
std::list<MenuItem> ZoneEntries(const ZoneMenuState& state, std::span<const ZoneOrdinal> zones) {
  const bool isGrouped = zones.size() > kMostSiblings;
  std::size_t step = isGrouped ? kGroupSize : 1;
  while (isGrouped && zones.size() > step * kMostSiblings) step *= kGroupSize;
  std::list<MenuItem> entries;
  for (std::size_t at = 0; at < zones.size(); at += step) {
    const auto part = zones.subspan(at, std::min(step, zones.size() - at));
    entries.push_back(isGrouped ? AddGroup(state, part) : AddZone(state, part.front()));
  }
  return entries;
}

// The submenu of a zone, when it opens.
void FillZone(MenuItem& menu, const ZoneMenuState& state, ZoneOrdinal zone) {
  const ZoneTree& tree = *state.tree;
  const ZoneTree::Node& node = tree.At(zone);
  const std::string section = tree.Section(zone);
  const std::string name = KindAndLabel(tree, node.depth) + " " + section;
  const std::string subzone = KindAndLabel(tree, node.depth + 1);
  const auto subzones = tree.ChildrenOf(zone);
  const bool hasSubzones = !subzones.empty();
  menu.children.clear();
  const auto add = [&](Command command, EntryOffset offset, std::string caption, bool enabled) {
    AddMenuItem(menu, MakeItem(command, zone, offset, std::move(caption)), enabled);
  };
  add(Command::kZoneHeader, kHeaderAt, hasSubzones ? subzone + "s:" : "(No " + subzone + "s Defined)", false);
  menu.children.splice(menu.children.end(), ZoneEntries(state, subzones));
  add(Command::kZoneLine, kLineAt, "-", true);
  add(Command::kAddSubzone, kAddAt,
      std::string(hasSubzones ? "Add " : "&Add ") + subzone + " " + section + "." +
          std::to_string(subzones.size() + 1),
      state.mayChange);
  add(Command::kDeleteZone, kDeleteAt, "&Delete " + name, state.mayChange);
  add(Command::kEditZone, kEditAt, "&Edit " + name, state.mayChange);
  add(Command::kZoomToZone, kZoomAt, "&Zoom To " + name, node.vertexCount > 0);
  add(Command::kBeenInZone, kBeenAt, "&Been In " + name + "?", state.canSearch);
}

// A zone's entry in the menu above it.
MenuItem AddZone(const ZoneMenuState& state, ZoneOrdinal zone) {
  const ZoneTree& tree = *state.tree;
  MenuItem item = MakeItem(Command::kZoneEntry, zone, kZoneAt,
                           KindAndLabel(tree, tree.At(zone).depth) + " &" + tree.Section(zone) + ": " +
                               Doubled(tree.At(zone).options.Description));
  item.fill = [state, zone](MenuItem& menu) { FillZone(menu, state, zone); };
  return item;
}

// "Alerted Zones 101 to 200". A group is told from the zone that it begins with, and from a group in it that
// begins with the same one, by its name.
MenuItem AddGroup(const ZoneMenuState& state, std::span<const ZoneOrdinal> zones) {
  const ZoneTree& tree = *state.tree;
  const ZoneTree::Node& first = tree.At(zones.front());
  MenuItem item = MakeItem(Command::kZoneEntry, zones.front(), kHeaderAt,
                           KindAndLabel(tree, first.depth) + "s &" + tree.Section(zones.front()) + " to " +
                               tree.Section(zones.back()));
  item.name = "mnuZones" + std::to_string(zones.size());
  item.fill = [state, parent = first.parent, from = first.number - 1, count = zones.size()](MenuItem& menu) {
    const auto siblings = state.tree->ChildrenOf(parent);
    menu.children = ZoneEntries(state, std::span(siblings).subspan(from, count));
  };
  return item;
}

// The page's shape.
void ShowPopupEntries(MenuModel& menus, const ZonePopupEntries& popup) {
  menus.At(Command::kFinishZone).visible = popup.finish;
  menus.At(Command::kCancelZone).visible = popup.cancel;
  menus.At(Command::kDeleteVertex).visible = popup.deleteVertex;
  menus.At(Command::kPopupZoneLine).visible = popup.cancel;
}

bool IsOfZone(const MenuItem& item) { return item.identifier != 0; }

}  // namespace

void ShowZones(MenuModel& menus, const ZoneMenuState& state) {
  const ZoneTree& tree = *state.tree;
  const std::string kind = NameOf(tree.TopLevelKind());
  MenuItem& menu = menus.At(Command::kZoneMenu);
  menu.children.remove_if(IsOfZone);
  const auto topLevel = tree.ChildrenOf(ZoneTree::kNone);
  const bool hasZones = !topLevel.empty();
  menus.At(Command::kZoneHeader).caption = hasZones ? kind + " Zones:" : "( No " + kind + " Zones Defined)";
  menu.children.splice(std::next(menu.children.begin()), ZoneEntries(state, topLevel));

  const auto show = [&](Command command, bool enabled) -> MenuItem& {
    MenuItem& item = menus.At(command);
    item.enabled = enabled;
    return item;
  };
  show(Command::kAddZone, state.mayChange).caption =
      (hasZones ? "Add " : "Add New ") + kind + " Zone " + std::to_string(topLevel.size() + 1);
  show(Command::kSwapZoneKind, state.mayChange).caption =
      std::string("Change Top-Level Zone(s) to ") + NameOf(OtherKind(tree.TopLevelKind()));
  show(Command::kDeleteAllZones, hasZones && state.mayChange);
  show(Command::kUndoZones, state.canUndo && state.mayChange);
  show(Command::kRedoZones, state.canRedo && state.mayChange);
  show(Command::kImportZones, state.mayChange);
  show(Command::kExportZones, hasZones);
  ShowPopupEntries(menus, state.popup);
}

void ShowZoneUnderPointer(MenuModel& menus, const ZoneMenuState& state, ZoneOrdinal zone) {
  MenuItem& menu = menus.At(Command::kZoneMenu);
  while (!menu.children.empty() && IsOfZone(menu.children.back())) menu.children.pop_back();
  if (zone == ZoneTree::kNone) return;
  const ZoneTree::Node& node = state.tree->At(zone);
  const std::string name = Doubled(node.options.Description);
  const auto add = [&](Command command, EntryOffset offset, std::string caption, bool enabled) {
    AddMenuItem(menu, MakeItem(command, zone, offset, std::move(caption)), enabled);
  };
  add(Command::kZoneLine, kLineAt, "-", true);
  add(Command::kDeleteZone, kDeleteAt, "&Delete " + name, state.mayChange);
  add(Command::kEditZone, kEditAt, "&Edit " + name, state.mayChange);
  add(Command::kZoomToZone, kZoomAt, "&Zoom To " + name, node.vertexCount > 0);
  add(Command::kBeenInZone, kBeenAt, "&Been To " + name + " ?", state.canSearch);
}

}  // namespace pallomir
