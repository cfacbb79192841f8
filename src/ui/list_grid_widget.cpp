#include "ui/list_grid_widget.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcutEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/accessible_widget.h"
#include "ui/list_grid_rows_widget.h"
#include "ui/question_queue.h"

namespace pallomir {
namespace {

constexpr int kFewestRowsShown = 3;
constexpr int kMostRowsShown = 12;  // beyond them the rows scroll
constexpr std::size_t kMostRowsNamed = 6;

/// Its access key acts at once and leaves the keyboard where it is: while the button shows itself pressed,
/// the next key would already change the row that it is meant for.
class RowButton : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
      return QPushButton::event(event);
    click();
    return true;
  }
};

// The caption with its access key: the last of these letters.
QString WithKey(const std::string& caption, char letter) {
  QString text = QString::fromStdString(caption);
  return text.insert(text.lastIndexOf(QChar(letter)), '&');
}

}  // namespace

ListGridWidget::ListGridWidget(QWidget* owner, ListGrid grid, QuestionQueue& questions)
    : QWidget(owner, Qt::Dialog), grid_(std::move(grid)), questions_(questions) {
  SetAccessible(this, {.role = QAccessible::Dialog});
  setAttribute(Qt::WA_DeleteOnClose);
  auto* parts = new QVBoxLayout(this);
  auto* titles = new QWidget(this);
  parts->addWidget(titles);
  rows_ = MakeRows(MakeTitles(titles));
  hintWidth_ = titles->sizeHint().width();
  for (const ListGridColumn& column : grid_.Setup().columns)
    if (column.width == 0) hintWidth_ += GridCellWidth(*titles, static_cast<int>(column.placeholder.size()));
  parts->addWidget(rows_, 1);
  for (const ListGridColumn& column : grid_.Setup().columns)
    if (!column.sameRule.empty() && !lblSame_) parts->addWidget(lblSame_ = MakeNote());
  parts->addWidget(MakeButtons());
  ShowAll();
  adjustSize();
  // That stops at two thirds of the screen, which cuts what the columns ask for.
  resize(std::clamp(sizeHint().width(), width(), std::max(width(), screen()->availableGeometry().width())),
         height());
  if (grid_.RowCount() != 0) rows_->FocusCell({1, 0});
}

QHBoxLayout* ListGridWidget::MakeTitles(QWidget* titles) {
  QHBoxLayout* cells = MakeGridCells(titles);
  if (grid_.Setup().hasCheckBoxes) {
    auto* room = new QWidget(titles);
    room->setFixedWidth(QCheckBox().sizeHint().width());
    cells->addWidget(room);
  }
  AddGridCell(cells, new QLabel("Row", titles), kRowNumberWidth);
  for (const ListGridColumn& column : grid_.Setup().columns)
    AddGridCell(cells, new QLabel(QString::fromStdString(column.title), titles), column.width);
  return cells;
}

ListGridRows* ListGridWidget::MakeRows(QHBoxLayout* titles) {
  auto* rows = new ListGridRows(this, grid_, titles);
  rows->focused = [this](GridCell cell) { CellFocused(cell); };
  rows->clicked = [this](GridCell cell) { CellClicked(cell); };
  rows->edit = [this](GridCell cell, const BoxEdit& edit, BoxSpan span) { Edit(cell, edit, span); };
  rows->checked = [this](std::size_t row, bool checked) {
    grid_.SetChecked(row, checked);
    ShowNote();
    ShowButtons();
  };
  return rows;
}

// Has its line also while it is empty, so that nothing moves when it is needed.
QLabel* ListGridWidget::MakeNote() {
  auto* note = new QLabel(this);
  note->setObjectName("lblSame");
  note->setTextFormat(Qt::PlainText);
  note->setContentsMargins(6, 0, 6, 0);
  return note;
}

QPushButton* ListGridWidget::AddButton(const char* name, const QString& caption,
                                       std::function<void()> action) {
  auto* button = new RowButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(true);  // Enter presses the button that has the keyboard, and no other one
  button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  connect(button, &QPushButton::clicked, this, std::move(action));
  buttons_.push_back(button);
  return button;
}

QWidget* ListGridWidget::MakeButtons() {
  cmdAddRow_ = AddButton("cmdAddRow", "Add\n&Row", [this] { ChangeRows(&ListGrid::AddRow, true); });
  cmdDeleteRow_ = AddButton("cmdDeleteRow", "", [this] { ChangeRows(&ListGrid::DeleteRow, false); });
  cmdMoveRowUp_ = AddButton("cmdMoveRowUp", "", [this] { ChangeRows(&ListGrid::MoveRowUp, false); });
  cmdMoveRowDn_ = AddButton("cmdMoveRowDn", "", [this] { ChangeRows(&ListGrid::MoveRowDown, false); });
  cmdApply_ = AddButton("cmdApply", "&Apply", [this] {
    const QPointer<ListGridWidget> self(this);
    TakeResult();
    if (self) close();
  });
  QPushButton* cmdCancel = AddButton("cmdCancel", "&Cancel", [this] { close(); });
  cmdAddRow_->setAccessibleName("Add Row");
  cmdAddRow_->setVisible(!grid_.Setup().hasAddRow);
  auto* box = new QWidget(this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  for (QPushButton* button : {cmdAddRow_, cmdDeleteRow_, cmdMoveRowUp_, cmdMoveRowDn_})
    row->addWidget(button);
  row->addStretch(1);
  for (QPushButton* button : {cmdApply_, cmdCancel}) {
    button->setMinimumHeight(cmdAddRow_->sizeHint().height());
    row->addWidget(button);
  }
  return box;
}

void ListGridWidget::ShowAll() {
  FollowRowCount();
  rows_->FollowGrid();
  ShowNote();
  ShowButtons();
}

void ListGridWidget::FollowRowCount() {
  const int count = static_cast<int>(std::min(grid_.RowCount(), std::size_t{kMostRowsShown}));
  const int shown = std::clamp(count, kFewestRowsShown, kMostRowsShown);
  const int growth = (shown - std::exchange(shownRows_, shown)) * rows_->RowHeight();
  rows_->SetHint({hintWidth_, rows_->HeightOf(shown)});
  rows_->updateGeometry();
  if (isVisible()) ResizeBy(growth);
}

void ListGridWidget::ResizeBy(int growth) {
  if (growth == 0 || isMaximized() || isFullScreen()) return;
  resize(width(), std::min(height() + growth, std::max(height(), screen()->availableGeometry().height())));
}

// More checked rows than can be; then each column whose texts are better all different.
void ListGridWidget::ShowNote() {
  if (!lblSame_) return;
  QString note;
  const ListGridSetup& setup = grid_.Setup();
  if (const std::size_t checked = grid_.CheckedCount(); checked > setup.mostChecked)
    note = QString("%1 rows are checked, %2 can be: %3")
               .arg(checked)
               .arg(setup.mostChecked)
               .arg(QString::fromStdString(setup.mostCheckedRule));
  for (std::size_t column = 0; column < grid_.Setup().columns.size() && note.isEmpty(); ++column) {
    const std::vector<std::size_t> rows = grid_.SameRows(column);
    QStringList numbers;
    for (std::size_t i = 0; i < std::min(rows.size(), kMostRowsNamed); ++i)
      numbers << QString::number(rows[i]);
    if (rows.size() > kMostRowsNamed) numbers << QChar(0x2026);
    const ListGridColumn& rule = grid_.Setup().columns[column];
    if (rows.empty()) continue;
    note = QString("Same %1 in rows %2: %3")
               .arg(QString::fromStdString(rule.title), numbers.join(", "),
                    QString::fromStdString(rule.sameRule));
  }
  lblSame_->setText(note);
}

void ListGridWidget::ChangeGrid(const std::function<void(ListGrid&)>& change) {
  change(grid_);
  ShowAll();
}

void ListGridWidget::ShowButtons() {
  const ListGridButtons buttons = grid_.Buttons();
  const struct {
    QPushButton* button;
    bool enabled;
    const std::string* caption;
    char key;
  } rows[] = {{cmdAddRow_, buttons.canAdd, nullptr, 0},
              {cmdDeleteRow_, buttons.canDelete, &buttons.deleteCaption, 'D'},
              {cmdMoveRowUp_, buttons.canMoveUp, &buttons.moveUpCaption, 'U'},
              {cmdMoveRowDn_, buttons.canMoveDown, &buttons.moveDownCaption, 'n'},
              {cmdApply_, buttons.canApply, nullptr, 0}};
  for (const auto& row : rows) {
    if (row.caption && row.button->text() != WithKey(*row.caption, row.key)) {
      row.button->setText(WithKey(*row.caption, row.key));
      row.button->setAccessibleName(QString::fromStdString(*row.caption).replace('\n', ' '));
    }
    // The keyboard must not slip on to the next button, where the same key would do something else.
    if (!row.enabled && row.button->hasFocus() && grid_.CurrentRow() != 0)
      rows_->FocusCell({grid_.CurrentRow(), focusColumn_});
    row.button->setEnabled(row.enabled);
  }
}

void ListGridWidget::CellFocused(GridCell cell) {
  focusColumn_ = cell.column;
  if (cell.column == kCheckBoxColumn) {
    grid_.MakeCurrent(cell.row);
  } else {
    const BoxSpan span = grid_.Focus(cell.row, cell.column);
    rows_->ShowBox(cell, span);
  }
  ShowNote();
  ShowButtons();
  rows_->Reveal(cell.row);
}

void ListGridWidget::CellClicked(GridCell cell) {
  if (const auto span = grid_.Click(cell.row, cell.column)) rows_->ShowBox(cell, span);
  ShowButtons();
}

void ListGridWidget::Edit(GridCell cell, const BoxEdit& edit, BoxSpan span) {
  const std::size_t before = grid_.RowCount();
  const ListGrid::Outcome outcome = grid_.Edit(cell.row, cell.column, edit, span);
  rows_->Reveal(cell.row);
  rows_->ShowBox(cell, outcome.changed ? std::optional(outcome.span) : std::nullopt);
  if (grid_.RowCount() != before) {
    FollowRowCount();
    rows_->FollowGrid();
  }
  if (outcome.changed) {
    rows_->ShowMarks();
    ShowNote();
  }
  ShowButtons();
  if (outcome.refusal) Tell(*outcome.refusal);
}

// With the keyboard in a row it goes along with that row, so that its key can be pressed again.
void ListGridWidget::ChangeRows(void (ListGrid::*change)(), bool goesToRow) {
  const auto cell = rows_->FocusedCell();
  (grid_.*change)();
  const std::size_t current = grid_.CurrentRow();
  ShowAll();
  if (current == 0) return;
  if (goesToRow) return rows_->FocusCell({current, 0});
  if (cell) return rows_->FocusCell({current, cell->column});
  rows_->Reveal(current);
}

// The message may stand over another window; afterwards the keyboard is back here.
void ListGridWidget::Tell(const Question& refusal) {
  questions_.Ask(refusal, [self = QPointer<ListGridWidget>(this)](const Answer&) {
    if (self && self->isVisible()) self->activateWindow();
  });
}

bool ListGridWidget::focusNextPrevChild(bool next) {
  std::vector<QWidget*> order;
  if (grid_.CurrentRow() != 0) order = rows_->CellsOf(grid_.CurrentRow());
  for (QPushButton* button : buttons_)
    if (button->isEnabled() && !button->isHidden()) order.push_back(button);
  const auto now = std::ranges::find(order, focusWidget());
  const std::size_t count = order.size();
  std::size_t to = 0;
  if (now != order.end())
    to = (static_cast<std::size_t>(now - order.begin()) + (next ? 1 : count - 1)) % count;
  order[to]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

void ListGridWidget::closeEvent(QCloseEvent* event) {
  event->accept();
  if (const auto tell = std::exchange(closed, {})) tell();
}

void ListGridWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) rows_->FollowGrid();
}

}  // namespace pallomir
