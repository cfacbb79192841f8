#include <gmock/gmock.h>

#include "commands/hotspot_menus.h"
#include "commands/menus.h"
#include "commands/unit_menu.h"

// Lists of the user that menus show and hold.

namespace pallomir {
namespace {

TEST(UnitMenu, IsTheListAndShowsTheDigits) {
  MenuModel menus;
  BuildMenus(menus);
  const std::string stored = "X0123456789ABFirst~-0123456789ACSecond~";
  std::vector<MobileUnit> units = ParseMobileUnits(stored);
  ShowUnitsInMenu(menus, units);
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 0).visible);
  EXPECT_EQ(menus.At(Command::kOnlyUnit, 1).caption, "0123456789AB - First");
  EXPECT_EQ(menus.At(Command::kOnlyUnit, 1).tag, "X0123456789ABFirst");
  EXPECT_TRUE(menus.At(Command::kOnlyUnit, 1).checked);
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 2).checked);
  EXPECT_EQ(menus.At(Command::kOnlyUnit, 2).hotKey, "2");
  const MenuItem* clicked = &menus.At(Command::kOnlyUnit, 2);
  std::swap(units[0].enabled, units[1].enabled);
  ShowUnitFlags(menus, units);
  EXPECT_EQ(&menus.At(Command::kOnlyUnit, 2), clicked) << "it is still handling its click";
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 1).checked);
  EXPECT_TRUE(clicked->checked);
  ShowUnitsToFit(menus, units);
  EXPECT_EQ(menus.Count(Command::kFitUnit), 2);
  EXPECT_EQ(menus.At(Command::kFitUnit, 1).caption, "0123456789AC - Second");
  EXPECT_FALSE(menus.At(Command::kFitUnit).visible);
  ShowUnitsInMenu(menus, {});
  ShowUnitsToFit(menus, {});
  EXPECT_EQ(menus.Count(Command::kFitUnit), 1);
  EXPECT_TRUE(menus.At(Command::kFitUnit).visible);
  EXPECT_TRUE(menus.At(Command::kOnlyUnit, 0).visible);
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 0).enabled) << "it stands for no unit";
  EXPECT_EQ(menus.Count(Command::kOnlyUnit), 1);
}

class HotspotMenuTest : public testing::Test {
 protected:
  HotspotMenuTest() { BuildMenus(menus_); }
  MenuModel menus_;
};

TEST_F(HotspotMenuTest, FollowsTheList) {
  LoadSSIDs(menus_, {"home", "-", "A&B"});
  LoadSecureSSIDs(menus_, {{"home", "WPA2", "abc"}});
  EXPECT_EQ(menus_.Count(Command::kHotspot), 4);
  EXPECT_EQ(menus_.At(Command::kHotspot, 3).caption, "A&B");
  EXPECT_FALSE(menus_.At("mnuOptionsHotSpotsArray", 2).IsSeparator());
  EXPECT_EQ(menus_.At(Command::kSecureHotspot, 1).caption, "home");
  EXPECT_EQ(menus_.At("mnuOptionsSecureHotSpotsArray", 1).tag, "WPA2~abc");
  EXPECT_TRUE(menus_.At("mnuOptionsHotSpotsArray", 2).visible);
  EXPECT_TRUE(menus_.At("mnuOptionsHotSpotsArray", 2).enabled);
  const struct {
    const char* array;
    Command entries;
    const char* separator;
    const char* edit;
    void (*empty)(MenuModel&);
  } lists[] = {
      {"mnuOptionsHotSpotsArray", Command::kHotspot, "mnuOptionsMUSeparator2", "mnuOptionsHotSpotsEdit",
       [](MenuModel& menus) { LoadSSIDs(menus, {}); }},
      {"mnuOptionsSecureHotSpotsArray", Command::kSecureHotspot, "mnuOptionsMUSeparator1",
       "mnuOptionsSecureHotSpotsEdit", [](MenuModel& menus) { LoadSecureSSIDs(menus, {}); }},
  };
  for (const auto& list : lists) {
    SCOPED_TRACE(list.array);
    EXPECT_FALSE(menus_.At(list.array, 0).visible);
    EXPECT_TRUE(menus_.At(list.separator).visible);
    EXPECT_EQ(menus_.At(list.edit).caption, "Edit List");
    list.empty(menus_);
    EXPECT_EQ(menus_.Count(list.entries), 1);
    EXPECT_TRUE(menus_.At(list.array, 0).visible);
    EXPECT_FALSE(menus_.At(list.separator).visible);
    EXPECT_EQ(menus_.At(list.edit).caption, "Edit List (currently empty)");
  }
}

TEST_F(HotspotMenuTest, TellsTheModeAndTheOther) {
  for (const bool isProhibited : {false, true}) {
    const std::string now = isProhibited ? "Prohibited" : "Permitted";
    const std::string other = isProhibited ? "Permitted" : "Prohibited";
    ShowHotspotMode(menus_, isProhibited);
    EXPECT_EQ(menus_.At("mnuOptionsHotSpots").tag, now);
    EXPECT_EQ(menus_.At("mnuOptionsHotSpots").caption, "Mobile Unit " + now + " Hotspots List");
    EXPECT_EQ(menus_.At("mnuOptionsHotSpotsChange").caption,
              "Change from \"" + now + "\" to \"" + other + "\" List");
  }
}

}  // namespace
}  // namespace pallomir
