#include "ui/list_grid.h"

#include <gmock/gmock.h>

namespace pallomir {
namespace {

using testing::ElementsAre;
using Action = BoxAction;
using Colour = ListGridColour;

constexpr std::size_t kHex = 0, kFree = 1, kName = 2, kKind = 3;

ListGridSetup FourColumns() {
  ListGridSetup setup;
  ListGridColumn hex{"txtHex", "Hex", "Add Hex Here"};
  hex.rules = {true, 12, "hex only"};
  hex.mustBeFull = true;
  ListGridColumn free{"txtFree", "Free", "Say Something"};
  free.rules.barred = "~";
  free.rules.barredRefusal = "no ~";
  ListGridColumn name{"txtName", "Name", "Add Name Here"};
  name.rules = {false, 8, "eight bytes"};
  ListGridColumn kind{"txtKind", "Kind", "Kind"};
  kind.choices = {"A", "B", "C"};
  setup.columns = {hex, free, name, kind};
  setup.messageTitle = "entry error";
  return setup;
}

// A box in one line: "ab|c" has the cursor behind b, "a[bc]" has bc selected.
BoxText Parse(std::string drawn) {
  const auto take = [&](const char* marks) {
    const std::size_t at = drawn.find_first_of(marks);
    drawn.erase(at, 1);
    return at;
  };
  if (drawn.find('[') == std::string::npos) {
    const std::size_t at = take("|");
    return {drawn, {at, at}};
  }
  const std::size_t begin = take("[");
  const std::size_t end = take("]");
  return {drawn, {begin, end}};
}

std::string Draw(const BoxText& box) {
  std::string drawn = box.text;
  if (box.span.begin == box.span.end) return drawn.insert(box.span.begin, "|");
  drawn.insert(box.span.end, "]");
  return drawn.insert(box.span.begin, "[");
}

struct KeyCase {
  std::size_t column;
  const char* before;
  std::vector<BoxEdit> keys;
  const char* after;
  Colour colour;
  int refusals;
};

void Check(const KeyCase& row) {
  ListGrid grid(FourColumns());
  BoxText box = Parse(row.before);
  ListGridRow filled{false, {"", "", "", ""}};
  filled.texts[row.column] = box.text;
  grid.Fill(filled);
  int refusals = 0;
  for (const BoxEdit& key : row.keys) {
    const auto outcome = grid.Edit(1, row.column, key, box.span);
    if (outcome.changed) box.span = outcome.span;
    refusals += outcome.refusal.has_value();
  }
  box.text = grid.Row(1).texts[row.column];
  EXPECT_EQ(Draw(box), row.after);
  EXPECT_EQ(grid.ColourOf(1, row.column), row.colour);
  EXPECT_EQ(refusals, row.refusals);
}

TEST(ListGridKeys, EachKeyGivesItsTextCursorColourAndMessage) {
  const BoxEdit back{Action::kBackspace}, del{Action::kDelete}, undo{Action::kUndo}, redo{Action::kRedo};
  const auto type = [](const char* text) { return BoxEdit{Action::kType, text}; };
  const auto paste = [](const char* text) { return BoxEdit{Action::kPaste, text}; };
  const auto red = Colour::kIncomplete, black = Colour::kText, teal = Colour::kPlaceholder;
  const KeyCase cases[] = {
      {kHex, "|", {type("a")}, "A|", red, 0},
      {kHex, "[Add Hex Here]", {type("f")}, "F|", red, 0},
      {kHex, "[Add Hex Here]", {type("g")}, "[Add Hex Here]", teal, 1},
      {kHex, "Add He|x Here", {type("0")}, "0|", red, 0},
      {kHex, "Add He|x Here", {back}, "|", red, 0},
      {kHex, "0123456789A|", {type("b")}, "0123456789AB|", black, 0},
      {kHex, "0123456789AB|", {type("c")}, "0123456789AB|", black, 1},
      {kHex, "[0]123456789AB", {type("c")}, "C|123456789AB", black, 0},
      {kHex, "[0]123456789AB", {type("x")}, "[0]123456789AB", black, 1},
      {kHex, "0123456789AB|", {back}, "0123456789A|", red, 0},
      {kHex, "|01", {back}, "|01", red, 0},
      {kHex, "01|", {del}, "01|", red, 0},
      {kHex, "0|123", {del, del}, "0|3", red, 0},
      {kHex, "0[12]3", {back}, "0|3", red, 0},
      {kHex, "|", {paste("00:13:a2:00:40:b1\n")}, "0013A20040B1|", black, 0},
      {kHex, "|", {paste("0123456789ABCDEF")}, "0123456789AB|", black, 1},
      {kHex, "|", {paste("12xyz34")}, "1234|", red, 1},
      {kHex, "0[1]2", {paste("xyz")}, "0[1]2", red, 1},
      {kHex, "[0]", {paste(":-")}, "[0]", red, 0},
      {kHex, "|", {type("é")}, "|", red, 1},
      // Stored, but never typed: not to be applied as it is.
      {kHex, "0123456789ab|", {}, "0123456789ab|", red, 0},
      {kFree, "[Say Something]", {type("V")}, "V|", black, 0},
      {kFree, "a|b", {type("~")}, "a|b", black, 1},
      {kFree, "|", {paste("a~b~c")}, "abc|", black, 1},
      {kFree, "|", {paste("\r\none\r\ntwo\tthree\n")}, "one two three|", black, 0},
      {kFree, "é☕|", {back}, "é|", black, 0},
      {kFree, "|🚚x", {del}, "|x", black, 0},
      {kFree, "|", {paste("ไทย हिन्दी"), back}, "ไทย हिन्द|", black, 0},
      {kFree, "|", {paste("a\177~b")}, "a b|", black, 1},
      {kFree, "a\xC3|", {type("b")}, "a?b|", black, 0},
      {kFree, "[ab]", {type("c"), type("d"), undo, undo, undo}, "[ab]", black, 0},
      {kFree, "ab|", {back, back, undo, undo, redo}, "a|", black, 0},
      {kFree, "ab|", {back, undo, type("c"), redo}, "abc|", black, 0},
      {kFree, "[Say Something]", {type("x"), undo}, "[Say Something]", teal, 0},
      // Limits count bytes, and what is cut off is cut between characters.
      {kName, "Café |", {type("☕")}, "Café |", black, 1},
      {kName, "Caf |", {type("☕")}, "Caf ☕|", black, 0},
      {kName, "|", {paste("1234567éx")}, "1234567|", black, 1},
      {kName, "1234567[8]", {type("9")}, "12345679|", black, 0},
      {kKind, "A|", {type("B"), paste("B"), back, del}, "A|", black, 0},
  };
  for (const KeyCase& row : cases) {
    SCOPED_TRACE(std::string(row.before) + " to " + row.after);
    Check(row);
  }
}

TEST(ListGridKeys, PositionsOutsideTheTextOrInsideACharacterDoNoHarm) {
  for (const BoxSpan span : {BoxSpan{9, 99}, BoxSpan{3, 1}, BoxSpan{2, 2}}) {
    ListGrid grid(FourColumns());
    grid.Fill({false, {"", "é☕", "", ""}});
    grid.Edit(1, kFree, {Action::kType, "x"}, span);
    EXPECT_EQ(ValidUtf8(grid.Row(1).texts[kFree]), grid.Row(1).texts[kFree]);
  }
}

TEST(ListGridKeys, EveryCharacterIsKeptAndNothingElseTaken) {
  // At the ends of what one to four bytes can hold, and one beyond.
  for (const char* valid : {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                            "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
    EXPECT_EQ(ValidUtf8(valid), valid);
  for (const char* invalid : {"\x80", "\xC1\xBF", "\xC2", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF",
                              "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xFF"})
    EXPECT_EQ(ValidUtf8(invalid).find_first_not_of("?\x7F"), std::string::npos)
        << testing::PrintToString(invalid);
}

class ListGridRows : public testing::Test {
 protected:
  static ListGrid Make(int rows, bool hasAddRow = false) {
    ListGridSetup setup = FourColumns();
    setup.hasAddRow = hasAddRow;
    setup.hasCheckBoxes = !hasAddRow;
    setup.fewestToDelete = hasAddRow ? 1 : 2;
    for (ListGridColumn& column : setup.columns) column.mustBeFull &= !hasAddRow;
    ListGrid grid(setup);
    for (int row = 0; row < rows; ++row) {
      grid.Fill({false, {"0123456789AB", std::string(1, static_cast<char>('a' + row)), "", ""}});
    }
    return grid;
  }
  static std::string Order(const ListGrid& grid) {
    std::string order;
    for (std::size_t row = 1; row <= grid.ListedCount(); ++row) order += grid.Row(row).texts[kFree];
    return order;
  }
  // "ADUd": Add, Delete, Up, down are enabled.
  static std::string Enabled(const ListGridButtons& buttons) {
    std::string letters;
    if (buttons.canAdd) letters += 'A';
    if (buttons.canDelete) letters += 'D';
    if (buttons.canMoveUp) letters += 'U';
    if (buttons.canMoveDown) letters += 'd';
    return letters;
  }
};

TEST_F(ListGridRows, ButtonsFollowTheCurrentRow) {
  const std::tuple<int, bool, std::size_t, const char*> cases[] = {
      {1, false, 1, "A"}, {3, false, 1, "ADd"}, {3, false, 2, "ADUd"}, {3, false, 3, "ADU"},
      {1, true, 1, "D"},  {2, true, 1, "Dd"},   {2, true, 2, "DU"},  // not below the add row
      {2, true, 3, ""},   {0, true, 1, ""},
  };
  for (const auto& [rows, hasAddRow, current, enabled] : cases) {
    SCOPED_TRACE(enabled);
    ListGrid grid = Make(rows, hasAddRow);
    grid.Focus(current, kFree);
    const ListGridButtons buttons = grid.Buttons();
    EXPECT_EQ(Enabled(buttons), enabled);
    const std::string n = std::to_string(current);
    EXPECT_EQ(buttons.deleteCaption, "Delete\nRow " + n);
    EXPECT_EQ(buttons.moveDownCaption, "Move\nRow " + n + " Dn");
  }
}

TEST_F(ListGridRows, MoveAndDeleteKeepTheOthersInOrderAndFollowTheRow) {
  ListGrid grid = Make(4);
  grid.Focus(3, kFree);
  grid.SetChecked(3, true);
  grid.MoveRowUp();
  grid.MoveRowUp();
  EXPECT_EQ(Order(grid), "cabd");
  EXPECT_TRUE(grid.Row(1).checked);
  grid.MoveRowUp();
  EXPECT_EQ(Order(grid), "cabd") << "the first row stays";
  grid.MoveRowDown();
  EXPECT_EQ(grid.CurrentRow(), 2u);
  grid.DeleteRow();
  EXPECT_EQ(Order(grid), "abd");
  grid.Focus(3, kFree);
  grid.DeleteRow();
  EXPECT_EQ(grid.CurrentRow(), 2u);
  for (int again = 0; again < 2; ++again) grid.DeleteRow();
  EXPECT_EQ(Order(grid), "a") << "the last row stays";
}

TEST_F(ListGridRows, UndoDoesNotReachAcrossAMove) {
  ListGrid grid = Make(2);
  grid.Focus(1, kFree);
  grid.Edit(1, kFree, {Action::kType, "x"}, {1, 1});
  grid.MoveRowDown();
  grid.Edit(1, kFree, {Action::kUndo}, {});
  EXPECT_EQ(Order(grid), "bax");
}

TEST_F(ListGridRows, ApplyNeedsACheckedRowAndCompleteTexts) {
  ListGrid grid = Make(2);
  EXPECT_FALSE(grid.Buttons().canApply);
  grid.SetChecked(2, true);
  EXPECT_TRUE(grid.Buttons().canApply);
  grid.Edit(1, kHex, {Action::kBackspace}, {12, 12});
  EXPECT_FALSE(grid.Buttons().canApply) << "also of a row that is not checked";
  grid.Edit(1, kHex, {Action::kType, "f"}, {11, 11});
  EXPECT_TRUE(grid.Buttons().canApply);
  EXPECT_TRUE(Make(0, true).Buttons().canApply) << "without check boxes an empty list is one";
}

TEST_F(ListGridRows, TheAddRowBecomesARowWhenSomethingIsEntered) {
  ListGrid grid = Make(1, true);
  grid.Focus(2, kName);
  for (const Action action : {Action::kBackspace, Action::kDelete, Action::kUndo}) {
    EXPECT_FALSE(grid.Edit(2, kName, {action}, {0, 13}).changed);
  }
  grid.Click(2, kKind);
  grid.SetChecked(2, true);
  EXPECT_EQ(grid.Edit(2, kHex, {Action::kType, "x"}, {}).changed, false) << "refused";
  EXPECT_THAT(grid.Row(2).texts, ElementsAre("Add Hex Here", "Say Something", "Add Name Here", "Kind"));
  grid.Edit(2, kName, {Action::kPaste, "net"}, {});
  EXPECT_EQ(grid.ListedCount(), 2u);
  EXPECT_TRUE(grid.IsPlaceholder(3, kName));
  grid.Focus(1, kName);
  for (int i = 0; i < 3; ++i) grid.DeleteRow();
  EXPECT_EQ(grid.RowCount(), 1u);
}

TEST_F(ListGridRows, WhatReadsAsItWasFilledIsStoredByteForByte) {
  ListGrid grid = Make(0, true);
  grid.Fill({false, {"", "caf\xE9", "a", ""}});
  grid.Fill({false, {"", "caf\xC3", "b", ""}});
  EXPECT_EQ(grid.Row(1).texts[kFree], "caf?");
  EXPECT_EQ(grid.Result(1, kFree), "caf\xE9");
  grid.Focus(2, kFree);
  grid.MoveRowUp();
  EXPECT_EQ(grid.Result(1, kFree), "caf\xC3") << "goes with its row";
  grid.Edit(1, kFree, {Action::kType, "!"}, {4, 4});
  EXPECT_EQ(grid.Result(1, kFree), "caf?!");
  grid.Edit(1, kFree, {Action::kUndo}, {});
  EXPECT_EQ(grid.Result(1, kFree), "caf\xC3");
}

TEST_F(ListGridRows, RowsWithTheSameCompleteTextAreNamed) {
  ListGridSetup setup = FourColumns();
  setup.columns[kHex].sameRule = "the first one counts";
  ListGrid grid(setup);
  const char* const texts[] = {"AAAAAAAAAAAA", "01",           "BBBBBBBBBBBB", "01",
                               "BBBBBBBBBBBB", "AAAAAAAAAAAA", "CCCCCCCCCCCC"};
  for (const char* text : texts) grid.Fill({false, {text, "same", "", ""}});
  const std::tuple<std::size_t, std::vector<std::size_t>, std::size_t> cases[] = {
      {1, {1, 6}, 0}, {2, {3, 5}, 0}, {6, {1, 6}, 1}, {5, {3, 5}, 3}, {7, {3, 5}, 0}};
  for (const auto& [current, rows, first] : cases) {
    grid.Focus(current, kHex);
    EXPECT_EQ(grid.SameRows(kHex), rows) << current;
    EXPECT_EQ(grid.FirstSame(current, kHex), first) << current;
  }
  EXPECT_TRUE(grid.SameRows(kFree).empty()) << "nothing follows from it";
  for (const std::size_t row : {6, 5}) grid.Edit(row, kHex, {Action::kBackspace}, {12, 12});
  EXPECT_TRUE(grid.SameRows(kHex).empty());
}

}  // namespace
}  // namespace pallomir
