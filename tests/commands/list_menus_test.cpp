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
  std::vector<MobileUnit> units = ParseMobileUnits("X0123456789ABFirst~-0123456789ACSecond~");
  ShowUnitsInMenu(menus, units);
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 0).visible);
  EXPECT_EQ(menus.At(Command::kOnlyUnit, 1).caption, "0123456789AB - First");
  EXPECT_TRUE(menus.At(Command::kOnlyUnit, 1).checked);
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
  ShowUnitsInMenu(menus, {});
  ShowUnitsToFit(menus, {});
  EXPECT_EQ(menus.Count(Command::kFitUnit), 1);
  EXPECT_TRUE(menus.At(Command::kOnlyUnit, 0).visible);
  EXPECT_FALSE(menus.At(Command::kOnlyUnit, 0).enabled) << "it stands for no unit";
}

TEST(HotspotMenu, FollowsTheList) {
  MenuModel menus;
  BuildMenus(menus);
  LoadSSIDs(menus, {"home", "-", "A&B"});
  LoadSecureSSIDs(menus, {{"home", "WPA2", "abc"}});
  EXPECT_EQ(menus.Count(Command::kHotspot), 4);
  EXPECT_EQ(menus.At(Command::kHotspot, 3).caption, "A&B");
  EXPECT_EQ(menus.At("mnuOptionsSecureHotSpotsArray", 1).tag, "WPA2~abc");
  for (const bool isEmpty : {false, true}) {
    if (isEmpty) {
      LoadSSIDs(menus, {});
      LoadSecureSSIDs(menus, {});
    }
    EXPECT_EQ(menus.At("mnuOptionsHotSpotsArray", 0).visible, isEmpty);
    EXPECT_EQ(menus.At("mnuOptionsMUSeparator2").visible, !isEmpty);
    EXPECT_EQ(menus.At("mnuOptionsSecureHotSpotsArray", 0).visible, isEmpty);
    EXPECT_EQ(menus.At("mnuOptionsMUSeparator1").visible, !isEmpty);
    EXPECT_EQ(menus.At("mnuOptionsSecureHotSpotsEdit").caption,
              isEmpty ? "Edit List (currently empty)" : "Edit List");
  }
  EXPECT_EQ(menus.Count(Command::kHotspot), 1);
}

}  // namespace
}  // namespace pallomir
