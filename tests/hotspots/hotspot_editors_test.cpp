#include "hotspots/hotspot_editors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
  EXPECT_EQ(grid.RowCount(), 3u);
  EXPECT_EQ(grid.Row(3).texts[0], "Add New Wi-Fi HotSpot's Name (SSID) Here");
  EXPECT_TRUE(grid.Buttons().canApply);
  EXPECT_EQ(Type(grid, 3, 0, "car"), "");
  Erase(grid, 1, 0);
  EXPECT_THAT(HotspotsOfEditor(grid), ElementsAre("work", "car"));
  for (int i = 0; i < 3; ++i) {
    grid.Focus(1, 0);
    grid.DeleteRow();
  }
  EXPECT_EQ(grid.RowCount(), 1u);
  EXPECT_TRUE(grid.Buttons().canApply) << "an empty list is one";
  EXPECT_THAT(HotspotsOfEditor(grid), IsEmpty());
}

TEST(HotspotEditors, AFullListTakesNoMore) {
  ListGrid grid = OpenHotspotEditor(std::vector<std::string>(kMaxHotspots - 1, "home"));
  for (int i = 0; i < 2; ++i) Type(grid, grid.RowCount(), 0, "more");
  EXPECT_EQ(HotspotsOfEditor(grid).size(), kMaxHotspots);
}

TEST(HotspotEditors, LimitsCountBytes) {
  ListGrid grid = OpenSecureHotspotEditor({{"", "WEP", ""}});
  const struct {
    std::size_t column, limit;
    const char* refusal;
  } cases[] = {{kHotspotSsidColumn, 32, "Enter up to 32 characters"},
               {kHotspotKeyColumn, 64, "Enter up to 64 characters"}};
  for (const auto& row : cases) {
    const std::string full(row.limit, 'x');
    for (const char c : full) EXPECT_EQ(Type(grid, 1, row.column, std::string(1, c)), "");
    const auto refused = grid.Edit(1, row.column, {BoxAction::kType, "y"}, {row.limit, row.limit});
    ASSERT_TRUE(refused.refusal);
    EXPECT_EQ(refused.refusal->text, row.refusal);
    EXPECT_EQ(refused.refusal->title, "Pallomir key entry error");
    EXPECT_EQ(refused.refusal->icon, Question::Icon::kExclamation);
    EXPECT_EQ(grid.Row(1).texts[row.column], full);
    // One selected character gives room for one byte, not for the two of an accented letter.
    EXPECT_TRUE(grid.Edit(1, row.column, {BoxAction::kType, "\u00E9"}, {3, 4}).refusal);
    EXPECT_FALSE(grid.Edit(1, row.column, {BoxAction::kType, "y"}, {3, 4}).refusal);
    EXPECT_EQ(grid.Row(1).texts[row.column], full.substr(0, 3) + "y" + full.substr(4));
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
  EXPECT_EQ(Type(grid, 1, kHotspotProtocolColumn, "x"), "");
  EXPECT_EQ(grid.Row(1).texts[kHotspotProtocolColumn], "WEP");
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
