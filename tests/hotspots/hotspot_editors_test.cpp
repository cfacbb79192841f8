#include "hotspots/hotspot_editors.h"

#include <gmock/gmock.h>

namespace pallomir {
namespace {

using testing::ElementsAre;

std::string Type(ListGrid& grid, std::size_t row, std::size_t column, const std::string& text) {
  const std::size_t end = grid.Row(row).texts[column].size();
  const auto outcome = grid.Edit(row, column, {BoxAction::kType, text}, {end, end});
  return outcome.refusal ? outcome.refusal->text : "";
}

void Erase(ListGrid& grid, std::size_t row, std::size_t column) {
  grid.Edit(row, column, {BoxAction::kDelete}, {0, grid.Row(row).texts[column].size()});
}

TEST(HotspotEditors, OnlyRowsWithANameAreStored) {
  ListGrid grid = OpenHotspotEditor({"home", "work"});
  EXPECT_EQ(grid.Row(3).texts[0], "Add New Wi-Fi HotSpot's Name (SSID) Here");
  EXPECT_TRUE(grid.Buttons().canApply);
  EXPECT_EQ(Type(grid, 3, 0, "car"), "");
  Erase(grid, 1, 0);
  EXPECT_THAT(HotspotsOfEditor(grid), ElementsAre("work", "car"));
}

TEST(HotspotEditors, AFullListTakesNoMore) {
  ListGrid grid = OpenHotspotEditor(std::vector<std::string>(kMaxHotspots - 1, "home"));
  for (int i = 0; i < 2; ++i) Type(grid, grid.RowCount(), 0, "more");
  EXPECT_EQ(HotspotsOfEditor(grid).size(), kMaxHotspots);
}

TEST(HotspotEditors, LimitsCountBytes) {
  ListGrid grid = OpenSecureHotspotEditor({{"", "WEP", ""}});
  const std::tuple<std::size_t, std::size_t, const char*> cases[] = {
      {kHotspotSsidColumn, 32, "Enter up to 32 characters"},
      {kHotspotKeyColumn, 64, "Enter up to 64 characters"}};
  for (const auto& [column, limit, refusal] : cases) {
    const std::string full(limit, 'x');
    EXPECT_EQ(Type(grid, 1, column, full), "");
    EXPECT_EQ(Type(grid, 1, column, "y"), refusal);
    EXPECT_EQ(grid.Row(1).texts[column], full);
  }
}

TEST(HotspotEditors, TheProtocolIsSteppedByClicks) {
  ListGrid grid = OpenSecureHotspotEditor({{"home", "open", "abc"}});
  std::vector<std::string> seen;
  for (int i = 0; i < 6; ++i) {
    grid.Click(1, kHotspotProtocolColumn);
    seen.push_back(grid.Row(1).texts[kHotspotProtocolColumn]);
  }
  EXPECT_THAT(seen, ElementsAre("WEP", "WPA", "WPA-E", "WPA2", "WPA2-E", "WEP"));
  grid.Click(2, kHotspotProtocolColumn);
  EXPECT_EQ(grid.Row(2).texts[kHotspotProtocolColumn], "Protocol") << "the add row has none";
}

TEST(HotspotEditors, ABlankNameIsNoneAndWhatWasNotEditedStays) {
  ListGrid grid = OpenHotspotEditor({" ", "", "caf\xE9", "home"});
  EXPECT_EQ(Type(grid, 5, 0, " "), "");
  EXPECT_EQ(Type(grid, 6, 0, " a "), "");
  EXPECT_EQ(grid.ListedCount(), 6u);
  EXPECT_THAT(HotspotsOfEditor(grid), ElementsAre(" ", "", "caf\xE9", "home", " a "));
  Erase(grid, 4, 0);
  Type(grid, 4, 0, "  ");
  EXPECT_THAT(HotspotsOfEditor(grid), ElementsAre(" ", "", "caf\xE9", " a "));

  const SecureHotspot odd[] = {{"\xFF", "WPA9\xE9", "\x80key"},
                               {"home", "Protocol", "Enter This Wi-Fi HotSpot's Password Here"}};
  EXPECT_THAT(SecureHotspotsOfEditor(OpenSecureHotspotEditor({odd[0], odd[1]})), ElementsAre(odd[0], odd[1]));
}

TEST(HotspotEditors, WhatWasNotTouchedHasItsDefault) {
  ListGrid grid = OpenSecureHotspotEditor({{"home", "", "~"}});
  Type(grid, 2, kHotspotSsidColumn, "car");
  Type(grid, 3, kHotspotKeyColumn, "a key without a name");
  EXPECT_EQ(grid.RowCount(), 4u);
  EXPECT_THAT(SecureHotspotsOfEditor(grid),
              ElementsAre(SecureHotspot{"home", "", "~"}, SecureHotspot{"car", "WPA2", ""}));
}

}  // namespace
}  // namespace pallomir
