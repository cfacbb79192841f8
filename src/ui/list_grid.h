#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/question_box.h"
#include "ui/box_edit.h"

namespace pallomir {

/// One column of text boxes.
struct ListGridColumn {
  std::string name;  ///< of its boxes, "txtID"
  std::string title;
  std::string placeholder;  ///< what a box shows until something is entered
  int width = 0;            ///< about so many characters; 0 takes the room that is left
  BoxRules rules = {};
  bool mustBeFull = false;    ///< a text shorter than the limit is incomplete and bars Apply
  std::string sameRule = {};  ///< what holds for rows with the same complete text; empty: nothing to say
  std::vector<std::string> choices = {};  ///< not typed into: each click takes the next of these
};

struct ListGridSetup {
  std::vector<ListGridColumn> columns;
  bool hasCheckBoxes = true;  ///< Apply then needs a checked row
  /// A row of placeholders stands at the end for what comes next. It is no row of the list: not moved,
  /// deleted or applied. Typing into it makes it one, and a new one appears.
  bool hasAddRow = false;
  std::size_t fewestToDelete = 2;  ///< Delete works from this many rows on, the add row not counted
  std::size_t mostRows = 9999;
  std::size_t mostChecked = 9999;    ///< more may be checked; the window points it out
  std::string mostCheckedRule = {};  ///< why
  std::string messageTitle;          ///< over the message for a refused character
};

struct ListGridRow {
  bool checked = false;
  std::vector<std::string> texts;        ///< a column each
  std::string carried = {};              ///< unseen; goes along with the row for whoever filled it in
  std::vector<std::string> filled = {};  ///< set by `Fill`: the texts byte for byte as they came
};

enum class ListGridColour { kPlaceholder, kText, kIncomplete };

struct ListGridButtons {
  std::string deleteCaption, moveUpCaption, moveDownCaption;
  bool canAdd = false, canDelete = false, canMoveUp = false, canMoveDown = false, canApply = false;
};

/// The list grid editor: a numbered list of rows, each a check box and some texts, one of them the current
/// row. It holds every rule of the keys; who shows it passes all input to `Edit` and then shows the row
/// again. Rows count from 1, as they are shown; columns count from 0; spans and lengths are bytes of UTF-8.
class ListGrid {
 public:
  explicit ListGrid(ListGridSetup setup);

  const ListGridSetup& Setup() const { return setup_; }
  std::size_t RowCount() const { return rows_.size(); }  ///< with the add row
  std::size_t ListedCount() const;                       ///< without it
  const ListGridRow& Row(std::size_t row) const { return rows_[row - 1]; }
  std::size_t CurrentRow() const { return current_; }  ///< 0 while there is no row
  bool IsAddRow(std::size_t row) const { return row > ListedCount(); }
  bool IsPlaceholder(std::size_t row, std::size_t column) const;
  ListGridColour ColourOf(std::size_t row, std::size_t column) const;
  ListGridButtons Buttons() const;

  /// Whether the text reads as it did when the row was filled in. False for a row that was added.
  bool IsAsFilled(std::size_t row, std::size_t column) const;
  /// The text to store: what is shown, or, as long as that reads as it was filled in, the bytes it came from.
  const std::string& Result(std::size_t row, std::size_t column) const;

  /// The rows that hold one complete text of a column with a `sameRule`: those that the current row is one
  /// of, or else the first such group. Empty while all texts differ.
  std::vector<std::size_t> SameRows(std::size_t column) const;
  /// The first of the rows with this row's complete text, if that is another one; else 0.
  std::size_t FirstSame(std::size_t row, std::size_t column) const;

  /// Adds a row as it was stored; bytes that are no UTF-8 show as "?".
  void Fill(ListGridRow row);

  /// The keyboard went to the row, be it to its check box.
  void MakeCurrent(std::size_t row) { current_ = row; }

  // The buttons; each does nothing where it is not enabled.
  void AddRow();
  void DeleteRow();
  void MoveRowUp();
  void MoveRowDown();

  void SetChecked(std::size_t row, bool checked);
  std::size_t CheckedCount() const;

  /// A box of the row got the focus: what is selected in it.
  BoxSpan Focus(std::size_t row, std::size_t column);

  /// A click on the box, or its choosing key. A placeholder is selected whole; a choice steps on. Gives what
  /// is selected then, or nothing where the click stands as it is.
  std::optional<BoxSpan> Click(std::size_t row, std::size_t column);

  struct Outcome {
    bool changed = false;  ///< else text and selection stay
    BoxSpan span;
    std::optional<Question> refusal;
  };

  /// The one door for all that changes a text. A placeholder counts as one: what is entered takes its place,
  /// Backspace and Delete empty the box, except in the add row, where they do nothing.
  Outcome Edit(std::size_t row, std::size_t column, const BoxEdit& edit, BoxSpan span);

 private:
  // The older and newer states of the box that was edited last.
  struct History {
    std::size_t row = 0, column = 0;
    std::vector<BoxText> past, future;
  };

  ListGridRow EmptyRow() const;
  bool IsComplete(std::size_t row, std::size_t column) const;
  bool MayChange(std::size_t row, std::size_t column, BoxAction action) const;
  Outcome EnterText(std::size_t row, std::size_t column, const BoxEdit& edit, BoxSpan span);
  Outcome StepHistory(std::vector<BoxText>& from, std::vector<BoxText>& to, const BoxText& now);
  History& HistoryOf(std::size_t row, std::size_t column);
  void Keep(std::size_t row, std::size_t column, BoxText now);
  void MoveTo(std::size_t row);

  ListGridSetup setup_;
  std::vector<ListGridRow> rows_;
  std::size_t current_ = 0;
  History history_;
};

}  // namespace pallomir
