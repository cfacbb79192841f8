#include "hotspots/hotspot_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/menus.h"
#include "shell/settings_keys.h"

namespace pallomir {
namespace {

using testing::ElementsAre;

TEST(HotspotLists, ReadWhatStandsBeforeTheFirstFault) {
  const struct {
    const char* stored;
    std::vector<std::string> ssids;
  } cases[] = {
      {"", {}},
      {setting::kHotspots.defaultValue.data(), {"default", "wireless", "linksys", "netgear"}},
      {"09Caf\u00E9 \u2615", {"Caf\u00E9 \u2615"}},
      {"0009 04 0~\"12", {"", " 04 0~\"12"}},
      {"04home4car", {"home"}},
      {"04home-3car03bus", {"home"}},
      {"04home 3car", {"home"}},
      {"04homeXXcar", {"home"}},
      {"04home05work", {"home"}},
      {"04home0", {"home"}},
  };
  for (const auto& row : cases) EXPECT_EQ(ParseHotspots(row.stored), row.ssids) << row.stored;
}

TEST(HotspotLists, ReadSecureEntriesOfTwoParts) {
  const struct {
    const char* stored;
    std::vector<SecureHotspot> hotspots;
  } cases[] = {
      {"04home08WPA2~abc", {{"home", "WPA2", "abc"}}},
      {"04home04WEP~03car07WPA~a~b", {{"home", "WEP", ""}, {"car", "WPA", "a~b"}}},
      {"04home04none", {{"home", "none", ""}}},
      {"04home08WPA2~abc03car", {{"home", "WPA2", "abc"}}},
      {"04home08WPA2~abc03car09WPA2~abc", {{"home", "WPA2", "abc"}}},
  };
  for (const auto& row : cases) EXPECT_EQ(ParseSecureHotspots(row.stored), row.hotspots) << row.stored;
}

TEST(HotspotLists, WhatIsWrittenIsReadBack) {
  const std::vector<std::string> ssids{"default", std::string(32, 'x'), "Caf\u00E9 \u2615", "12\"34", "a~b"};
  EXPECT_EQ(ParseHotspots(EncodeHotspots(ssids)), ssids);
  const std::vector<SecureHotspot> hotspots{
      {"home", "WPA2-E", std::string(64, '~')}, {std::string(32, '0'), "WEP", ""}, {"\u2615", "", "k"}};
  EXPECT_EQ(ParseSecureHotspots(EncodeSecureHotspots(hotspots)), hotspots);
  // What two digits can't tell is cut between two characters, and the entries behind it are unharmed.
  const auto cut = ParseHotspots(EncodeHotspots({std::string(98, 'x') + "\u00E9", "next"}));
  EXPECT_THAT(cut, ElementsAre(std::string(98, 'x'), "next"));
}

class HotspotMenuTest : public testing::Test {
 protected:
  HotspotMenuTest() { BuildMenus(menus_); }
  MenuModel menus_;
};

TEST_F(HotspotMenuTest, FollowsTheList) {
  LoadSSIDs(menus_, "04home01-03A&B");
  LoadSecureSSIDs(menus_, "04home08WPA2~abc");
  EXPECT_THAT(HotspotsFromMenu(menus_), ElementsAre("home", "-", "A&B"));
  EXPECT_FALSE(menus_.At("mnuOptionsHotSpotsArray", 2).IsSeparator());
  EXPECT_THAT(SecureHotspotsFromMenu(menus_), ElementsAre(SecureHotspot{"home", "WPA2", "abc"}));
  EXPECT_EQ(menus_.At("mnuOptionsSecureHotSpotsArray", 1).tag, "WPA2~abc");
  EXPECT_TRUE(menus_.At("mnuOptionsHotSpotsArray", 2).visible);
  EXPECT_TRUE(menus_.At("mnuOptionsHotSpotsArray", 2).enabled);
  const struct {
    const char* array;
    const char* separator;
    const char* edit;
    void (*load)(MenuModel&, std::string_view);
  } lists[] = {
      {"mnuOptionsHotSpotsArray", "mnuOptionsMUSeparator2", "mnuOptionsHotSpotsEdit", LoadSSIDs},
      {"mnuOptionsSecureHotSpotsArray", "mnuOptionsMUSeparator1", "mnuOptionsSecureHotSpotsEdit",
       LoadSecureSSIDs},
  };
  for (const auto& list : lists) {
    SCOPED_TRACE(list.array);
    EXPECT_FALSE(menus_.At(list.array, 0).visible);
    EXPECT_TRUE(menus_.At(list.separator).visible);
    EXPECT_EQ(menus_.At(list.edit).caption, "Edit List");
    list.load(menus_, "");
    EXPECT_EQ(menus_.Count(list.array), 1);
    EXPECT_TRUE(menus_.At(list.array, 0).visible);
    EXPECT_FALSE(menus_.At(list.separator).visible);
    EXPECT_EQ(menus_.At(list.edit).caption, "Edit List (currently empty)");
  }
}

TEST_F(HotspotMenuTest, TheModeIsSwitchedThereAndBack) {
  const struct {
    std::string mode;
    bool toggle;
    std::string now, other;
  } cases[] = {{"Permitted", false, "Permitted", "Prohibited"},
               {"Prohibited", false, "Prohibited", "Permitted"},
               {"Permitted", true, "Prohibited", "Permitted"},
               {"Prohibited", true, "Permitted", "Prohibited"},
               {"Nonsense", false, "Permitted", "Prohibited"}};
  for (const auto& row : cases) {
    std::string mode = row.mode;
    HotSpotsChange(menus_, mode, row.toggle);
    EXPECT_EQ(mode, row.now);
    EXPECT_EQ(menus_.At("mnuOptionsHotSpots").tag, row.now);
    EXPECT_EQ(menus_.At("mnuOptionsHotSpots").caption, "Mobile Unit " + row.now + " Hotspots List");
    EXPECT_EQ(menus_.At("mnuOptionsHotSpotsChange").caption,
              "Change from \"" + row.now + "\" to \"" + row.other + "\" List");
  }
}

}  // namespace
}  // namespace pallomir
