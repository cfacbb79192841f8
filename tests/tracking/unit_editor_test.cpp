#include "tracking/unit_editor.h"

#include <gmock/gmock.h>

namespace pallomir {
namespace {

TEST(UnitEditor, WhatIsOpenedAndAppliedUntouchedStaysExceptForItsNumber) {
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"Delivery van", false, "Delivery van"},
      {"", false, ""},
      {"Unit #7", true, "Unit #2"},
      {"Unit #", true, "Unit #2"},
      {"Unit #7 blue van", true, "Unit #7 blue van"},
      {"Unit 7", false, "Unit 7"},
      {"unit #7", false, "unit #7"},
      {"Café ☕", false, "Café ☕"},
      {"caf\xE9", false, "caf\xE9"},
      {"Enter This Mobile Unit's Description Here", true, "Unit #2"},
  };
  for (const auto& [stored, isPlaceholder, applied] : cases) {
    SCOPED_TRACE(stored);
    const ListGrid grid = OpenUnitEditor({{true, "0123456789AB", "First"}, {false, "0123456789AC", stored}});
    EXPECT_EQ(grid.IsPlaceholder(2, kUnitDescriptionColumn), isPlaceholder);
    EXPECT_EQ(UnitsOfEditor(grid),
              (std::vector<MobileUnit>{{true, "0123456789AB", "First"}, {false, "0123456789AC", applied}}));
  }
}

TEST(UnitEditor, AKeptDescriptionGoesWithItsRowUntilItIsTouched) {
  ListGrid grid = OpenUnitEditor({{true, "0123456789AB", "Unit #1 red"}, {true, "0123456789AC", "Unit #2"}});
  grid.Focus(1, kUnitIdColumn);
  grid.MoveRowDown();
  EXPECT_EQ(UnitsOfEditor(grid)[0].description, "Unit #1");
  EXPECT_EQ(UnitsOfEditor(grid)[1].description, "Unit #1 red");
  grid.Edit(2, kUnitDescriptionColumn, {BoxAction::kType, "V"}, {});
  EXPECT_EQ(UnitsOfEditor(grid)[1].description, "V");
}

TEST(UnitEditor, WhatIsAppliedCanBeStoredAndReadBack) {
  ListGrid grid = OpenUnitEditor({});
  grid.AddRow();
  const auto refusal = grid.Edit(1, kUnitIdColumn, {BoxAction::kType, "0123456789abc"}, {}).refusal;
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->text, "Enter up to 12 \"hex\" characters (0-9, a-f, A-F)");
  grid.Edit(1, kUnitDescriptionColumn, {BoxAction::kPaste, "Van ~ 3"}, {});
  grid.SetChecked(1, true);
  EXPECT_TRUE(grid.Buttons().canApply);
  EXPECT_EQ(EncodeMobileUnits(UnitsOfEditor(grid)), "X0123456789ABVan  3~");
}

TEST(UnitEditor, AFlagThatAKeyChangesMeanwhileIsTakenOver) {
  const std::vector<MobileUnit> opened{{true, "0123456789AB", "One"},
                                       {false, "0123456789AC", "Two"},
                                       {false, "0123456789AC", "Two again"},
                                       {true, "0123456789AD", "Three"}};
  ListGrid grid = OpenUnitEditor(opened);
  grid.Focus(4, kUnitIdColumn);
  grid.MoveRowUp();
  grid.SetChecked(2, true);   // by hand, and no key says otherwise
  grid.SetChecked(1, false);  // by hand, and then a key
  std::vector<MobileUnit> now = opened;
  now[0].enabled = false;
  now[2].enabled = true;
  now[3].enabled = false;
  TakeChangedFlags(grid, opened, now);
  std::vector<MobileUnit> again = now;
  again[0].enabled = true;
  TakeChangedFlags(grid, now, again);
  EXPECT_EQ(UnitsOfEditor(grid), (std::vector<MobileUnit>{{true, "0123456789AB", "One"},
                                                          {true, "0123456789AC", "Two"},
                                                          {false, "0123456789AD", "Three"},
                                                          {true, "0123456789AC", "Two again"}}));
  grid.Edit(1, kUnitIdColumn, {BoxAction::kBackspace}, {12, 12});
  TakeChangedFlags(grid, again, opened);
  EXPECT_TRUE(grid.Row(1).checked) << "a row that is another unit by now";
}

}  // namespace
}  // namespace pallomir
