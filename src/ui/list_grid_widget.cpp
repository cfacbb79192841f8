#include "ui/list_grid_widget.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/list_grid_box_widget.h"
#include "ui/question_queue.h"

namespace pallomir {
namespace {

constexpr int kFewestRowsShown = 3;
constexpr int kMostRowsShown = 12;  // beyond them the rows scroll
constexpr int kDarkBelow = 128;     // lightness of a box
constexpr int kNumberDigits = 5;
constexpr int kCellMargin = 6;
constexpr int kFreeColumnWidth =
    43;  // characters of the longest placeholder in a column of no width of its own

QString Name(const std::string& name, std::size_t row) {
  return QString("%1(%2)").arg(QString::fromStdString(name)).arg(row);
}

// The given colours are meant for a white box; a dark one has lighter ones of the same kind.
QPalette PaletteOf(ListGridColour colour, const QPalette& around) {
  const bool isDark = around.color(QPalette::Base).lightness() < kDarkBelow;
  QPalette palette;
  if (colour == ListGridColour::kPlaceholder)
    palette.setColor(QPalette::Text, isDark ? QColor(96, 208, 208) : QColor(0, 128, 128));
  if (colour == ListGridColour::kIncomplete)
    palette.setColor(QPalette::Text, isDark ? QColor(255, 128, 128) : QColor(255, 0, 0));
  return palette;
}

// Cells of a row and of the titles stand under each other because both are laid out by this.
int CellWidth(const QWidget& cell, int characters) {
  return cell.fontMetrics().averageCharWidth() * characters + 16;
}

void AddCell(QHBoxLayout* cells, QWidget* cell, int width) {
  if (width != 0) cell->setFixedWidth(CellWidth(*cell, width));
  cells->addWidget(cell, width == 0 ? 1 : 0);
}

QHBoxLayout* MakeCells(QWidget* parent) {
  auto* cells = new QHBoxLayout(parent);
  cells->setContentsMargins(kCellMargin, 2, kCellMargin, 2);
  return cells;
}

}  // namespace

// As high as the rows it should show at once.
class ListGridWidget::RowsArea : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize sizeHint() const override { return {hintWidth, hintHeight}; }
  int hintWidth = 0;
  int hintHeight = 0;
  QLayout* titles = nullptr;

 protected:
  // The titles leave the room that the scroll bar takes from the rows.
  void resizeEvent(QResizeEvent* event) override {
    QScrollArea::resizeEvent(event);
    if (!titles) return;
    QMargins margins = titles->contentsMargins();
    margins.setRight(kCellMargin + width() - 2 * frameWidth() - viewport()->width());
    titles->setContentsMargins(margins);
  }
};

ListGridWidget::ListGridWidget(QWidget* owner, ListGrid grid, QuestionQueue& questions)
    : QWidget(owner, Qt::Dialog), grid_(std::move(grid)), questions_(questions) {
  setAttribute(Qt::WA_DeleteOnClose);
  auto* parts = new QVBoxLayout(this);
  QWidget* titles = MakeTitles();
  parts->addWidget(titles);
  area_ = new RowsArea(this);
  area_->titles = titles->layout();
  area_->hintWidth = titles->sizeHint().width();
  for (const ListGridColumn& column : grid_.Setup().columns)
    if (column.width == 0)
      area_->hintWidth += CellWidth(*titles, static_cast<int>(column.placeholder.size()));
  area_->setWidgetResizable(true);
  area_->setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  rowsLayout_ = new QVBoxLayout(content);
  rowsLayout_->setContentsMargins(0, 0, 0, 0);
  rowsLayout_->setSpacing(0);
  rowsLayout_->addStretch(1);
  area_->setWidget(content);
  parts->addWidget(area_, 1);
  parts->addWidget(MakeButtons());
  FollowRowCount();
  ShowRows();
  adjustSize();
  if (!rows_.empty()) FocusBox(1, 0);
}

QWidget* ListGridWidget::MakeTitles() {
  auto* titles = new QWidget(this);
  QHBoxLayout* cells = MakeCells(titles);
  if (grid_.Setup().hasCheckBoxes) {
    auto* room = new QWidget(titles);
    room->setFixedWidth(QCheckBox().sizeHint().width());
    cells->addWidget(room);
  }
  AddCell(cells, new QLabel("Row", titles), kNumberDigits);
  for (const ListGridColumn& column : grid_.Setup().columns) {
    AddCell(cells, new QLabel(QString::fromStdString(column.title), titles), column.width);
  }
  return titles;
}

QPushButton* ListGridWidget::AddButton(const char* name, const QString& caption,
                                       std::function<void()> action) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(true);  // Enter presses the button that has the keyboard, and no other one
  button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  connect(button, &QPushButton::clicked, this, std::move(action));
  return button;
}

QWidget* ListGridWidget::MakeButtons() {
  cmdAddRow_ = AddButton("cmdAddRow", "Add\nRow", [this] { ChangeRows(&ListGrid::AddRow, true); });
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

void ListGridWidget::AppendRow() {
  const std::size_t row = rows_.size() + 1;
  RowWidgets widgets;
  widgets.frame = new QFrame;
  widgets.frame->setObjectName(Name("Frame", row));
  QHBoxLayout* cells = MakeCells(widgets.frame);
  QWidget* previous = rows_.empty() ? area_->widget() : rows_.back().last;
  std::vector<QWidget*> inTabOrder;
  if (grid_.Setup().hasCheckBoxes) {
    widgets.chkEnabled = MakeCheckBox(row, widgets.frame);
    cells->addWidget(widgets.chkEnabled);
    inTabOrder.push_back(widgets.chkEnabled);
  }
  auto* lblIx = new QLabel(QString::number(row), widgets.frame);
  lblIx->setObjectName(Name("lblIx", row));
  AddCell(cells, lblIx, kNumberDigits);
  for (std::size_t column = 0; column < grid_.Setup().columns.size(); ++column) {
    widgets.boxes.push_back(MakeBox(row, column, widgets.frame));
    AddCell(cells, widgets.boxes.back(), grid_.Setup().columns[column].width);
    inTabOrder.push_back(widgets.boxes.back());
  }
  rowsLayout_->insertWidget(static_cast<int>(rows_.size()), widgets.frame);
  widgets.frame->show();  // else the layout leaves it out until the event loop runs
  for (QWidget* widget : inTabOrder) {
    QWidget::setTabOrder(previous, widget);
    previous = widget;
  }
  widgets.last = previous;
  rows_.push_back(widgets);
}

QCheckBox* ListGridWidget::MakeCheckBox(std::size_t row, QFrame* frame) {
  auto* box = new QCheckBox(frame);
  box->setObjectName(Name("chkEnabled", row));
  box->setAccessibleName(QString("Row %1 enabled").arg(row));
  connect(box, &QCheckBox::clicked, this, [this, row](bool checked) {
    grid_.SetChecked(row, checked);
    ShowButtons();
  });
  return box;
}

ListGridBox* ListGridWidget::MakeBox(std::size_t row, std::size_t column, QFrame* frame) {
  const ListGridColumn& of = grid_.Setup().columns[column];
  auto* box = new ListGridBox(frame, !of.choices.empty());
  box->setObjectName(Name(of.name, row));
  box->setAccessibleName(QString("Row %1 %2").arg(row).arg(QString::fromStdString(of.title)));
  box->edit = [this, row, column](const BoxEdit& edit, BoxSpan span) { Edit(row, column, edit, span); };
  box->focused = [this, row, column] { BoxFocused(row, column); };
  box->clicked = [this, row, column] { BoxClicked(row, column); };
  return box;
}

void ListGridWidget::TakeLastRow() {
  delete rows_.back().frame;
  rows_.pop_back();
}

// Rows in the window follow the model by number; what they show is the model's business.
void ListGridWidget::FollowRowCount() {
  const std::size_t before = rows_.size();
  while (rows_.size() > grid_.RowCount()) TakeLastRow();
  while (rows_.size() < grid_.RowCount()) {
    AppendRow();
    ShowRow(rows_.size());
  }
  if (rows_.size() == before && before != 0) return;
  const int rowHeight = rows_.empty() ? cmdApply_->sizeHint().height() : rows_[0].frame->sizeHint().height();
  const int shown = std::clamp(static_cast<int>(rows_.size()), kFewestRowsShown, kMostRowsShown);
  const int hint = shown * rowHeight + 2 * area_->frameWidth();
  const int growth = hint - std::exchange(area_->hintHeight, hint);
  area_->updateGeometry();
  if (isVisible()) ResizeBy(growth);
}

void ListGridWidget::ResizeBy(int growth) {
  if (growth == 0 || isMaximized() || isFullScreen()) return;
  resize(width(), std::min(height() + growth, std::max(height(), screen()->availableGeometry().height())));
}

void ListGridWidget::ShowRows() {
  for (std::size_t row = 1; row <= rows_.size(); ++row) ShowRow(row);
  ShowButtons();
}

void ListGridWidget::ShowRow(std::size_t row) {
  if (QCheckBox* box = rows_[row - 1].chkEnabled) {
    box->setChecked(grid_.Row(row).checked);
    box->setEnabled(!grid_.IsAddRow(row));
  }
  for (std::size_t column = 0; column < rows_[row - 1].boxes.size(); ++column) {
    ShowBox(row, column, std::nullopt);
  }
}

void ListGridWidget::ShowBox(std::size_t row, std::size_t column, std::optional<BoxSpan> span) {
  ListGridBox* box = rows_[row - 1].boxes[column];
  const ListGridColour colour = grid_.ColourOf(row, column);
  box->ShowText(grid_.Row(row).texts[column], span);
  const QPalette wanted = PaletteOf(colour, palette());
  if (wanted.color(QPalette::Text) != box->palette().color(QPalette::Text)) box->setPalette(wanted);
  // The colour alone tells nothing to who can't see it.
  box->setAccessibleDescription(colour == ListGridColour::kIncomplete ? "Incomplete" : "");
}

void ListGridWidget::ShowButtons() {
  const ListGridButtons buttons = grid_.Buttons();
  const struct {
    QPushButton* button;
    bool enabled;
    const std::string* caption;
  } rows[] = {{cmdAddRow_, buttons.canAdd, nullptr},
              {cmdDeleteRow_, buttons.canDelete, &buttons.deleteCaption},
              {cmdMoveRowUp_, buttons.canMoveUp, &buttons.moveUpCaption},
              {cmdMoveRowDn_, buttons.canMoveDown, &buttons.moveDownCaption},
              {cmdApply_, buttons.canApply, nullptr}};
  for (const auto& row : rows) {
    if (row.caption) {
      row.button->setText(QString::fromStdString(*row.caption));
      row.button->setAccessibleName(row.button->text().replace('\n', ' '));
    }
    // The keyboard must not slip on to the next button, where the same key would do something else.
    if (!row.enabled && row.button->hasFocus() && grid_.CurrentRow() != 0) {
      FocusBox(grid_.CurrentRow(), focusColumn_);
    }
    row.button->setEnabled(row.enabled);
  }
}

void ListGridWidget::FocusBox(std::size_t row, std::size_t column) {
  rows_[row - 1].boxes[column]->setFocus(Qt::OtherFocusReason);
  BoxFocused(row, column);
}

void ListGridWidget::BoxFocused(std::size_t row, std::size_t column) {
  focusColumn_ = column;
  const BoxSpan span = grid_.Focus(row, column);
  ShowBox(row, column, span);
  ShowButtons();
  area_->ensureWidgetVisible(rows_[row - 1].frame, 0, 0);
}

void ListGridWidget::BoxClicked(std::size_t row, std::size_t column) {
  if (const auto span = grid_.Click(row, column)) ShowBox(row, column, span);
  ShowButtons();
}

void ListGridWidget::Edit(std::size_t row, std::size_t column, const BoxEdit& edit, BoxSpan span) {
  const ListGrid::Outcome outcome = grid_.Edit(row, column, edit, span);
  ShowBox(row, column, outcome.changed ? std::optional(outcome.span) : std::nullopt);
  FollowRowCount();
  ShowButtons();
  if (outcome.refusal) Tell(*outcome.refusal);
}

void ListGridWidget::ChangeRows(void (ListGrid::*change)(), bool goesToRow) {
  (grid_.*change)();
  FollowRowCount();
  ShowRows();
  if (grid_.CurrentRow() == 0) return;
  // A new row has its place only after the layout.
  QCoreApplication::sendPostedEvents(area_->widget(), QEvent::LayoutRequest);
  QCoreApplication::sendPostedEvents(area_, QEvent::LayoutRequest);
  if (goesToRow) return FocusBox(grid_.CurrentRow(), 0);
  area_->ensureWidgetVisible(rows_[grid_.CurrentRow() - 1].frame, 0, 0);
}

// The message may stand over another window; afterwards the keyboard is back here.
void ListGridWidget::Tell(const Question& refusal) {
  questions_.Ask(refusal, [self = QPointer<ListGridWidget>(this)](const Answer&) {
    if (self && self->isVisible()) self->activateWindow();
  });
}

void ListGridWidget::closeEvent(QCloseEvent* event) {
  event->accept();
  if (const auto tell = std::exchange(closed, {})) tell();
}

void ListGridWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  for (std::size_t row = 1; row <= rows_.size(); ++row) ShowRow(row);
}

}  // namespace pallomir
