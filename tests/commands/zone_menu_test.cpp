#include "commands/zone_menu.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>

#include "commands/menus.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class ZoneMenuTest : public testing::Test {
 protected:
  ZoneMenuTest() { BuildMenus(menus_); }

  void Show(const std::vector<std::pair<int, const char*>>& zones, ZoneKind kind = ZoneKind::kAlerted) {
    ZoneTreeBuilder builder(kind);
    for (const auto& [depth, name] : zones)
      builder.Append(depth, {"", name}, std::vector<ZoneVertex>{{1, 2}, {3, 4}, {5, 6}});
    tree_ = builder.Build();
    ShowZones(menus_, state_);
  }

  static std::vector<std::string> Captions(const MenuItem& menu) {
    std::vector<std::string> captions;
    for (const MenuItem& item : menu.children) {
      if (item.visible) captions.push_back((item.enabled ? "" : "~") + item.caption);
    }
    return captions;
  }
  std::vector<std::string> ZonesMenu() { return Captions(menus_.At(Command::kZoneMenu)); }

  MenuItem& Entry(MenuItem& menu, std::size_t position) {
    return *std::next(menu.children.begin(), static_cast<long>(position));
  }
  MenuItem& Opened(MenuItem& item) {
    item.fill(item);
    return item;
  }

  MenuModel menus_;
  ZoneTree tree_;
  ZoneMenuState state_ = [this] {
    ZoneMenuState state;
    state.tree = &tree_;
    return state;
  }();
};

const std::vector<std::string> kRest{"~&Undo", "~&Redo", "&Import...", "E&xport..."};

TEST_F(ZoneMenuTest, WithoutZones) {
  Show({});
  EXPECT_THAT(ZonesMenu(), ElementsAre("~( No Alerted Zones Defined)", "-", "Add New Alerted Zone 1",
                                       "Change Top-Level Zone(s) to Non-Alert", "~Delete All Zones", "~&Undo",
                                       "~&Redo", "&Import...", "~E&xport..."));
  Show({}, ZoneKind::kNonAlert);
  EXPECT_EQ(ZonesMenu()[0], "~( No Non-Alert Zones Defined)");
  EXPECT_EQ(ZonesMenu()[3], "Change Top-Level Zone(s) to Alerted");
}

TEST_F(ZoneMenuTest, ZonesAndTheirSubmenus) {
  Show({{1, "R&D \"x\", <b>"}, {2, "Bay"}, {2, "Gate"}, {3, "Post"}, {1, "Yard"}});
  Show({{1, "R&D \"x\", <b>"}, {2, "Bay"}, {2, "Gate"}, {3, "Post"}, {1, "Yard"}});  // shown anew, not twice
  std::vector<std::string> expected{
      "~Alerted Zones:",    "Alerted Zone &1: R&&D \"x\", <b>",      "Alerted Zone &2: Yard", "-",
      "Add Alerted Zone 3", "Change Top-Level Zone(s) to Non-Alert", "Delete All Zones"};
  expected.insert(expected.end(), kRest.begin(), kRest.end());
  EXPECT_THAT(ZonesMenu(), ElementsAreArray(expected));

  MenuItem& depot = Opened(Entry(menus_.At(Command::kZoneMenu), 1));
  EXPECT_THAT(Captions(depot), ElementsAre("~Non-Alert Subzones:", "Non-Alert Subzone &1.1: Bay",
                                           "Non-Alert Subzone &1.2: Gate", "-", "Add Non-Alert Subzone 1.3",
                                           "&Delete Alerted Zone 1", "&Edit Alerted Zone 1",
                                           "&Zoom To Alerted Zone 1", "~&Been In Alerted Zone 1?"));
  MenuItem& bay = Opened(Entry(depot, 1));
  EXPECT_THAT(Captions(bay),
              ElementsAre("~(No Alerted Subzones Defined)", "-", "&Add Alerted Subzone 1.1.1",
                          "&Delete Non-Alert Subzone 1.1", "&Edit Non-Alert Subzone 1.1",
                          "&Zoom To Non-Alert Subzone 1.1", "~&Been In Non-Alert Subzone 1.1?"));
  EXPECT_EQ(bay.identifier, 0x2000 + 8 * 1 + 7);
  EXPECT_EQ(Entry(bay, 3).command, Command::kDeleteZone);
  EXPECT_EQ(Entry(bay, 3).index, 1);
  Show({{1, "A"}, {2, "B"}}, ZoneKind::kNonAlert);
  EXPECT_EQ(Captions(Opened(Entry(menus_.At(Command::kZoneMenu), 1)))[1], "Alerted Subzone &1.1: B");
}

TEST_F(ZoneMenuTest, IdentifiersRepeatButEntriesActOnTheirOwnZone) {
  Show(std::vector<std::pair<int, const char*>>(1025, {1, "Z"}));
  MenuItem& group = Opened(Entry(menus_.At(Command::kZoneMenu), 11));
  EXPECT_EQ(group.caption, "Alerted Zones &1001 to 1025");
  MenuItem& last = Opened(group.children.back());
  EXPECT_EQ(last.identifier, 0x2007);
  EXPECT_EQ(Entry(last, 3).identifier, 0x2003);
  EXPECT_EQ(Entry(last, 3).index, 1024);
}

// Opens all groups, and gathers the zones of their entries.
void Gather(MenuItem& item, std::vector<int>& zones, int& mostEntries) {
  mostEntries = std::max(mostEntries, static_cast<int>(item.children.size()));
  for (MenuItem& child : item.children) {
    if (child.command != Command::kZoneEntry) continue;
    if (child.name.empty()) {
      zones.push_back(child.index);
    } else {
      child.fill(child);
      Gather(child, zones, mostEntries);
    }
  }
}

TEST_F(ZoneMenuTest, ManySiblingsStandInGroups) {
  for (const int depth : {1, 2}) {
    for (const int count : {500, 501, 10'000, 50'001}) {
      std::vector<std::pair<int, const char*>> list(static_cast<std::size_t>(count), {depth, "Z"});
      if (depth == 2) list.insert(list.begin(), {1, "Depot"});
      Show(list);
      MenuItem& menu = menus_.At(Command::kZoneMenu);
      std::vector<int> zones;
      int mostEntries = 0;
      Gather(depth == 1 ? menu : Opened(Entry(menu, 1)), zones, mostEntries);
      std::vector<int> expected(static_cast<std::size_t>(count));
      std::iota(expected.begin(), expected.end(), depth - 1);
      EXPECT_EQ(zones, expected) << depth << " " << count;
      EXPECT_LE(mostEntries, 509);
      EXPECT_EQ(mostEntries >= 500, count == 500) << "as few as that stand in no groups";
      EXPECT_EQ(menus_.At(Command::kAddZone).caption,
                depth == 1 ? "Add Alerted Zone " + std::to_string(count + 1) : "Add Alerted Zone 2");
    }
  }
  Show({{1, "A"}});
  EXPECT_EQ(ZonesMenu().size(), 6 + kRest.size()) << "the groups are gone";
}

TEST_F(ZoneMenuTest, WhileAShapeIsDrawnTheListStaysAsItIs) {
  state_ = {.tree = &tree_,
            .mayChange = false,
            .canUndo = true,
            .canRedo = true,
            .canSearch = true,
            .popup = {.cancel = true}};
  Show({{1, "A"}});
  EXPECT_THAT(ZonesMenu(), ElementsAre("~Alerted Zones:", "Alerted Zone &1: A", "-", "~Add Alerted Zone 2",
                                       "~Change Top-Level Zone(s) to Non-Alert", "~Delete All Zones",
                                       "~&Undo", "~&Redo", "~&Import...", "E&xport..."));
  EXPECT_THAT(Captions(Opened(Entry(menus_.At(Command::kZoneMenu), 1))),
              ElementsAre("~(No Non-Alert Subzones Defined)", "-", "~&Add Non-Alert Subzone 1.1",
                          "~&Delete Alerted Zone 1", "~&Edit Alerted Zone 1", "&Zoom To Alerted Zone 1",
                          "&Been In Alerted Zone 1?"));
  EXPECT_TRUE(menus_.At(Command::kCancelZone).visible);
  EXPECT_FALSE(menus_.At(Command::kFinishZone).visible);
  state_.popup = {.finish = true, .cancel = true, .deleteVertex = true};
  ShowZones(menus_, state_);
  EXPECT_TRUE(menus_.At(Command::kFinishZone).visible && menus_.At(Command::kDeleteVertex).visible);
}

TEST_F(ZoneMenuTest, TheZoneUnderThePointer) {
  Show({{1, "A"}, {2, "B & C"}});
  const auto before = ZonesMenu();
  ShowZoneUnderPointer(menus_, state_, 1);
  ShowZoneUnderPointer(menus_, state_, 1);
  const auto shown = ZonesMenu();
  ASSERT_EQ(shown.size(), before.size() + 5) << "they never pile up";
  EXPECT_THAT(std::vector(shown.end() - 5, shown.end()),
              ElementsAre("-", "&Delete B && C", "&Edit B && C", "&Zoom To B && C", "~&Been To B && C ?"));
  MenuItem& menu = menus_.At(Command::kZoneMenu);
  EXPECT_EQ(menu.children.back().identifier, 0x2008 + 6);
  EXPECT_EQ(menu.children.back().index, 1);
  ShowZoneUnderPointer(menus_, state_, ZoneTree::kNone);
  EXPECT_EQ(ZonesMenu(), before);
  ShowZoneUnderPointer(menus_, state_, 0);
  ShowZones(menus_, state_);
  EXPECT_EQ(ZonesMenu(), before);
}

}  // namespace
}  // namespace pallomir
