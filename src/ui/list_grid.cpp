#include "ui/list_grid.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace pallomir {
namespace {

constexpr std::size_t kMostUndoSteps = 200;

std::string NextChoice(const std::vector<std::string>& choices, const std::string& now) {
  const auto found = std::find(choices.begin(), choices.end(), now);
  return found == choices.end() || found + 1 == choices.end() ? choices.front() : *(found + 1);
}

}  // namespace

ListGrid::ListGrid(ListGridSetup setup) : setup_(std::move(setup)) {
  if (setup_.hasAddRow) rows_.push_back(EmptyRow());
  current_ = rows_.size();
}

std::size_t ListGrid::ListedCount() const { return rows_.size() - (setup_.hasAddRow ? 1 : 0); }

bool ListGrid::IsPlaceholder(std::size_t row, std::size_t column) const {
  return Row(row).texts[column] == setup_.columns[column].placeholder;
}

ListGridColour ListGrid::ColourOf(std::size_t row, std::size_t column) const {
  if (IsPlaceholder(row, column)) return ListGridColour::kPlaceholder;
  const ListGridColumn& rule = setup_.columns[column];
  const bool isIncomplete = rule.mustBeFull && !IsFull(rule.rules, Row(row).texts[column]);
  return isIncomplete ? ListGridColour::kIncomplete : ListGridColour::kText;
}

ListGridButtons ListGrid::Buttons() const {
  const std::string number = current_ == 0 ? "" : " " + std::to_string(current_);
  const std::size_t listed = ListedCount();
  const bool isListed = current_ >= 1 && current_ <= listed;
  ListGridButtons buttons;
  buttons.deleteCaption = "Delete\nRow" + number;
  buttons.moveUpCaption = "Move\nRow" + number + " Up";
  buttons.moveDownCaption = "Move\nRow" + number + " Dn";
  buttons.canAdd = !setup_.hasAddRow && listed < setup_.mostRows;
  buttons.canDelete = isListed && listed >= setup_.fewestToDelete;
  buttons.canMoveUp = isListed && current_ >= 2;
  buttons.canMoveDown = isListed && current_ < listed;
  buttons.canApply = !setup_.hasCheckBoxes;
  for (std::size_t row = 1; row <= listed; ++row) buttons.canApply |= Row(row).checked;
  for (std::size_t column = 0; column < setup_.columns.size(); ++column) {
    if (!setup_.columns[column].mustBeFull) continue;
    for (std::size_t row = 1; row <= listed && buttons.canApply; ++row) {
      buttons.canApply = ColourOf(row, column) == ListGridColour::kText;
    }
  }
  return buttons;
}

ListGridRow ListGrid::EmptyRow() const {
  ListGridRow row;
  for (const ListGridColumn& column : setup_.columns) row.texts.push_back(column.placeholder);
  return row;
}

bool ListGrid::IsAsFilled(std::size_t row, std::size_t column) const {
  const ListGridRow& of = Row(row);
  return column < of.filled.size() && ValidUtf8(of.filled[column]) == of.texts[column];
}

const std::string& ListGrid::Result(std::size_t row, std::size_t column) const {
  return IsAsFilled(row, column) ? Row(row).filled[column] : Row(row).texts[column];
}

bool ListGrid::IsComplete(std::size_t row, std::size_t column) const {
  return ColourOf(row, column) == ListGridColour::kText;
}

std::vector<std::size_t> ListGrid::SameRows(std::size_t column) const {
  std::vector<std::size_t> rows;
  if (setup_.columns[column].sameRule.empty()) return rows;
  std::unordered_map<std::string_view, std::size_t> firstWith;
  std::string_view same;
  const bool isListed = current_ >= 1 && current_ <= ListedCount();
  const std::string_view current = isListed ? Row(current_).texts[column] : std::string_view();
  for (std::size_t row = 1; row <= ListedCount(); ++row) {
    const std::string_view text = Row(row).texts[column];
    if (!IsComplete(row, column) || firstWith.emplace(text, row).second) continue;
    if (same.empty() || text == current) same = text;
  }
  for (std::size_t row = 1; row <= ListedCount() && !same.empty(); ++row)
    if (Row(row).texts[column] == same) rows.push_back(row);
  return rows;
}

std::size_t ListGrid::FirstSame(std::size_t row, std::size_t column) const {
  if (setup_.columns[column].sameRule.empty() || IsAddRow(row) || !IsComplete(row, column)) return 0;
  for (std::size_t before = 1; before < row; ++before)
    if (Row(before).texts[column] == Row(row).texts[column]) return before;
  return 0;
}

void ListGrid::Fill(ListGridRow row) {
  row.texts.resize(setup_.columns.size());
  row.filled = row.texts;
  for (std::string& text : row.texts) text = ValidUtf8(text);
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(ListedCount()), std::move(row));
  current_ = rows_.size();
}

void ListGrid::AddRow() {
  if (!Buttons().canAdd) return;
  rows_.push_back(EmptyRow());
  MoveTo(rows_.size());
}

void ListGrid::DeleteRow() {
  if (!Buttons().canDelete) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(current_ - 1));
  MoveTo(std::min(current_, rows_.size()));
}

void ListGrid::MoveRowUp() {
  if (!Buttons().canMoveUp) return;
  std::swap(rows_[current_ - 1], rows_[current_ - 2]);
  MoveTo(current_ - 1);
}

void ListGrid::MoveRowDown() {
  if (!Buttons().canMoveDown) return;
  std::swap(rows_[current_ - 1], rows_[current_]);
  MoveTo(current_ + 1);
}

// The rows have changed places, so the history of a place is no longer that of its text.
void ListGrid::MoveTo(std::size_t row) {
  current_ = row;
  history_ = {};
}

void ListGrid::SetChecked(std::size_t row, bool checked) {
  if (!IsAddRow(row)) rows_[row - 1].checked = checked;
}

std::size_t ListGrid::CheckedCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(rows_, &ListGridRow::checked));
}

BoxSpan ListGrid::Focus(std::size_t row, std::size_t column) {
  current_ = row;
  return {0, Row(row).texts[column].size()};
}

std::optional<BoxSpan> ListGrid::Click(std::size_t row, std::size_t column) {
  const ListGridColumn& rule = setup_.columns[column];
  std::string& text = rows_[row - 1].texts[column];
  const bool isChoice = !rule.choices.empty();
  if (isChoice && !IsAddRow(row)) text = NextChoice(rule.choices, text);
  if (!isChoice && !IsPlaceholder(row, column)) return std::nullopt;
  return BoxSpan{0, text.size()};
}

bool ListGrid::MayChange(std::size_t row, std::size_t column, BoxAction action) const {
  if (!setup_.columns[column].choices.empty()) return false;
  if (!IsAddRow(row)) return true;
  const bool isEntry = action == BoxAction::kType || action == BoxAction::kPaste;
  return isEntry && ListedCount() < setup_.mostRows;
}

ListGrid::Outcome ListGrid::Edit(std::size_t row, std::size_t column, const BoxEdit& edit, BoxSpan span) {
  if (!MayChange(row, column, edit.action)) return {};
  const std::string& text = Row(row).texts[column];
  span = IsPlaceholder(row, column) ? BoxSpan{0, text.size()} : ClampSpan(text, span);
  History& history = HistoryOf(row, column);
  Outcome outcome;
  switch (edit.action) {
    case BoxAction::kUndo:
      outcome = StepHistory(history.past, history.future, {text, span});
      break;
    case BoxAction::kRedo:
      outcome = StepHistory(history.future, history.past, {text, span});
      break;
    default:
      outcome = EnterText(row, column, edit, span);
  }
  if (outcome.changed && IsAddRow(row)) rows_.push_back(EmptyRow());
  return outcome;
}

ListGrid::Outcome ListGrid::EnterText(std::size_t row, std::size_t column, const BoxEdit& edit,
                                      BoxSpan span) {
  BoxText box{Row(row).texts[column], span};
  const BoxText before = box;
  Outcome outcome;
  if (edit.action == BoxAction::kType || edit.action == BoxAction::kPaste) {
    const std::string_view refusal = InsertIntoBox(setup_.columns[column].rules, edit, box);
    if (!refusal.empty()) {
      outcome.refusal = Question{Question::Kind::kMessage, Question::Icon::kExclamation, setup_.messageTitle,
                                 std::string(refusal), ""};
    }
  } else {
    RemoveFromBox(edit.action, box);
  }
  outcome.changed = !(box == before);
  outcome.span = box.span;
  if (!outcome.changed) return outcome;
  Keep(row, column, before);
  rows_[row - 1].texts[column] = std::move(box.text);
  return outcome;
}

ListGrid::History& ListGrid::HistoryOf(std::size_t row, std::size_t column) {
  if (history_.row != row || history_.column != column) history_ = {row, column, {}, {}};
  return history_;
}

void ListGrid::Keep(std::size_t row, std::size_t column, BoxText now) {
  History& history = HistoryOf(row, column);
  history.future.clear();
  history.past.push_back(std::move(now));
  if (history.past.size() > kMostUndoSteps) history.past.erase(history.past.begin());
}

ListGrid::Outcome ListGrid::StepHistory(std::vector<BoxText>& from, std::vector<BoxText>& to,
                                        const BoxText& now) {
  if (from.empty()) return {};
  to.push_back(now);
  const BoxText then = from.back();
  from.pop_back();
  rows_[history_.row - 1].texts[history_.column] = then.text;
  return {true, then.span, {}};
}

}  // namespace pallomir
