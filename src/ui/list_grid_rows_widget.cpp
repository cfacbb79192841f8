#include "ui/list_grid_rows_widget.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <algorithm>

#include "ui/list_grid_box_widget.h"

namespace pallomir {
namespace {

constexpr int kDarkBelow = 128;  // lightness of a box
constexpr int kCellMargin = 6;

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

}  // namespace

int GridCellWidth(const QWidget& cell, int characters) {
  return cell.fontMetrics().averageCharWidth() * characters + 16;
}

void AddGridCell(QHBoxLayout* cells, QWidget* cell, int characters) {
  if (characters != 0) cell->setFixedWidth(GridCellWidth(*cell, characters));
  cells->addWidget(cell, characters == 0 ? 1 : 0);
}

QHBoxLayout* MakeGridCells(QWidget* parent) {
  auto* cells = new QHBoxLayout(parent);
  cells->setContentsMargins(kCellMargin, 2, kCellMargin, 2);
  return cells;
}

ListGridRows::ListGridRows(QWidget* parent, const ListGrid& grid, QHBoxLayout* titles)
    : QScrollArea(parent), grid_(grid), titles_(titles) {
  setFocusPolicy(Qt::NoFocus);
  setWidget(new QWidget);
  const RowWidgets sample = MakeRow(0, this);
  rowHint_ = sample.frame->sizeHint();
  rowHeight_ = rowHint_.height();
  delete sample.frame;
  verticalScrollBar()->setSingleStep(rowHeight_);
}

ListGridRows::RowWidgets ListGridRows::MakeRow(std::size_t row, QWidget* parent) {
  RowWidgets widgets;
  widgets.frame = new QFrame(parent);
  widgets.frame->setObjectName(Name("Frame", row));
  QHBoxLayout* cells = MakeGridCells(widgets.frame);
  if (grid_.Setup().hasCheckBoxes) {
    widgets.chkEnabled = MakeCheckBox(row, widgets.frame);
    cells->addWidget(widgets.chkEnabled);
  }
  auto* lblIx = new QLabel(QString::number(row), widgets.frame);
  lblIx->setObjectName(Name("lblIx", row));
  AddGridCell(cells, lblIx, kRowNumberWidth);
  for (std::size_t column = 0; column < grid_.Setup().columns.size(); ++column) {
    widgets.boxes.push_back(MakeBox({row, column}, widgets.frame));
    AddGridCell(cells, widgets.boxes.back(), grid_.Setup().columns[column].width);
  }
  return widgets;
}

QCheckBox* ListGridRows::MakeCheckBox(std::size_t row, QFrame* frame) {
  auto* box = new QCheckBox(frame);
  box->setObjectName(Name("chkEnabled", row));
  box->setAccessibleName(QString("Row %1 enabled").arg(row));
  box->installEventFilter(this);
  connect(box, &QCheckBox::clicked, this, [this, row](bool isChecked) { checked(row, isChecked); });
  return box;
}

ListGridBox* ListGridRows::MakeBox(GridCell cell, QFrame* frame) {
  const ListGridColumn& of = grid_.Setup().columns[cell.column];
  auto* box = new ListGridBox(frame, !of.choices.empty());
  box->setObjectName(Name(of.name, cell.row));
  box->setAccessibleName(QString("Row %1 %2").arg(cell.row).arg(QString::fromStdString(of.title)));
  box->installEventFilter(this);
  box->edit = [this, cell](const BoxEdit& wish, BoxSpan span) { edit(cell, wish, span); };
  box->focused = [this, cell] { focused(cell); };
  box->clicked = [this, cell] { clicked(cell); };
  return box;
}

// Not at once: one of its boxes may be handling the key that scrolled it away.
ListGridRows::Rows::iterator ListGridRows::Drop(Rows::iterator row) {
  QFrame* frame = row->second.frame;
  for (QWidget* widget : frame->findChildren<QWidget*>()) widget->setObjectName({});
  frame->setObjectName({});
  frame->hide();
  frame->deleteLater();
  return rows_.erase(row);
}

void ListGridRows::FollowGrid() {
  LayOut();
  for (const auto& [row, widgets] : rows_) ShowRow(row);
}

void ListGridRows::LayOut() {
  if (const auto cell = FocusedCell(); cell && cell->row > grid_.RowCount() && grid_.RowCount() > 0)
    FocusCell({grid_.RowCount(), cell->column});
  const int height = static_cast<int>(grid_.RowCount()) * rowHeight_;
  widget()->resize(std::max(viewport()->width(), rowHint_.width()), std::max(viewport()->height(), height));
  FillView();
}

void ListGridRows::FillView() {
  const int top = verticalScrollBar()->value();
  const auto first = static_cast<std::size_t>(top / rowHeight_) + 1;
  const auto last =
      std::min(static_cast<std::size_t>((top + viewport()->height() - 1) / rowHeight_) + 1, grid_.RowCount());
  const auto kept = FocusedCell();
  for (auto row = rows_.begin(); row != rows_.end();) {
    const bool isInView = row->first >= first && row->first <= last;
    const bool isKept = kept && kept->row == row->first && row->first <= grid_.RowCount();
    row = isInView || isKept ? std::next(row) : Drop(row);
  }
  for (std::size_t row = first; row <= last; ++row) Need(row);
  for (const auto& [row, widgets] : rows_) Place(row);
}

void ListGridRows::Place(std::size_t row) {
  rows_.at(row).frame->setGeometry(0, static_cast<int>(row - 1) * rowHeight_, widget()->width(), rowHeight_);
}

ListGridRows::RowWidgets& ListGridRows::Need(std::size_t row) {
  const auto [place, isNew] = rows_.try_emplace(row);
  if (isNew) {
    place->second = MakeRow(row, widget());
    Place(row);
    ShowRow(row);
    place->second.frame->show();
  }
  return place->second;
}

void ListGridRows::ShowRow(std::size_t row) {
  if (QCheckBox* box = rows_.at(row).chkEnabled) {
    box->setChecked(grid_.Row(row).checked);
    box->setEnabled(!grid_.IsAddRow(row));
  }
  for (std::size_t column = 0; column < rows_.at(row).boxes.size(); ++column)
    ShowBox({row, column}, std::nullopt);
}

void ListGridRows::ShowBox(GridCell cell, std::optional<BoxSpan> span) {
  const auto row = rows_.find(cell.row);
  if (row == rows_.end()) return;
  ListGridBox* box = row->second.boxes[cell.column];
  box->ShowText(grid_.Row(cell.row).texts[cell.column], span);
  const QPalette wanted = PaletteOf(grid_.ColourOf(cell.row, cell.column), palette());
  if (wanted.color(QPalette::Text) != box->palette().color(QPalette::Text)) box->setPalette(wanted);
  ShowMark(cell.row, cell.column);
}

// The colour alone tells nothing to who can't see it.
void ListGridRows::ShowMark(std::size_t row, std::size_t column) {
  ListGridBox* box = rows_.at(row).boxes[column];
  const std::size_t first = grid_.FirstSame(row, column);
  QString mark;
  if (grid_.ColourOf(row, column) == ListGridColour::kIncomplete) mark = "Incomplete";
  if (first != 0) mark = QString("The same as in row %1").arg(first);
  box->setAccessibleDescription(mark);
  box->setToolTip(first != 0 ? mark : QString());
}

void ListGridRows::ShowMarks() {
  for (const auto& [row, widgets] : rows_)
    for (std::size_t column = 0; column < widgets.boxes.size(); ++column) ShowMark(row, column);
}

void ListGridRows::Reveal(std::size_t row) {
  QScrollBar* bar = verticalScrollBar();
  const int top = static_cast<int>(row - 1) * rowHeight_;
  if (top < bar->value()) bar->setValue(top);
  if (top + rowHeight_ > bar->value() + viewport()->height())
    bar->setValue(top + rowHeight_ - viewport()->height());
}

void ListGridRows::FocusCell(GridCell cell) {
  Reveal(cell.row);
  const RowWidgets& row = Need(cell.row);
  const bool isChecked = cell.column == kCheckBoxColumn && row.chkEnabled && row.chkEnabled->isEnabled();
  if (cell.column == kCheckBoxColumn && !isChecked) cell.column = 0;
  QWidget* widget = row.boxes[isChecked ? 0 : cell.column];
  if (isChecked) widget = row.chkEnabled;
  widget->setFocus(Qt::OtherFocusReason);
  focused(cell);  // also while the window is not active
}

std::optional<GridCell> ListGridRows::FocusedCell() const { return CellOf(window()->focusWidget()); }

std::optional<GridCell> ListGridRows::CellOf(const QObject* widget) const {
  for (const auto& [row, widgets] : rows_) {
    if (!widget || widget->parent() != widgets.frame) continue;
    if (widget == widgets.chkEnabled) return GridCell{row, kCheckBoxColumn};
    const auto box = std::ranges::find(widgets.boxes, widget);
    if (box != widgets.boxes.end())
      return GridCell{row, static_cast<std::size_t>(box - widgets.boxes.begin())};
  }
  return std::nullopt;
}

std::vector<QWidget*> ListGridRows::CellsOf(std::size_t row) {
  Reveal(row);
  const RowWidgets& widgets = Need(row);
  std::vector<QWidget*> cells;
  if (widgets.chkEnabled && widgets.chkEnabled->isEnabled()) cells.push_back(widgets.chkEnabled);
  cells.insert(cells.end(), widgets.boxes.begin(), widgets.boxes.end());
  return cells;
}

bool ListGridRows::Walk(GridCell from, int key, Qt::KeyboardModifiers modifiers) {
  const auto page = std::max(viewport()->height() / rowHeight_ - 1, 1);
  const struct {
    int key;
    Qt::KeyboardModifiers modifiers;
    int step;
  } steps[] = {{Qt::Key_Up, Qt::NoModifier, -1},
               {Qt::Key_Down, Qt::NoModifier, 1},
               {Qt::Key_PageUp, Qt::NoModifier, -page},
               {Qt::Key_PageDown, Qt::NoModifier, page},
               {Qt::Key_Home, Qt::ControlModifier, -static_cast<int>(grid_.RowCount())},
               {Qt::Key_End, Qt::ControlModifier, static_cast<int>(grid_.RowCount())}};
  for (const auto& step : steps) {
    if (key != step.key || modifiers != step.modifiers) continue;
    const int to = std::clamp(static_cast<int>(from.row) + step.step, 1, static_cast<int>(grid_.RowCount()));
    if (to != static_cast<int>(from.row)) FocusCell({static_cast<std::size_t>(to), from.column});
    return true;
  }
  return false;
}

bool ListGridRows::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto cell = CellOf(watched);
    if (cell && Walk(*cell, key->key(), key->modifiers() & ~Qt::KeypadModifier)) return true;
  }
  if (event->type() == QEvent::FocusIn) {
    const auto cell = CellOf(watched);
    if (cell && cell->column == kCheckBoxColumn) focused(*cell);
  }
  return QScrollArea::eventFilter(watched, event);
}

void ListGridRows::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  // The titles leave the room that the scroll bar takes from the rows.
  QMargins margins = titles_->contentsMargins();
  margins.setRight(kCellMargin + width() - 2 * frameWidth() - viewport()->width());
  titles_->setContentsMargins(margins);
  LayOut();
}

void ListGridRows::scrollContentsBy(int dx, int dy) {
  QScrollArea::scrollContentsBy(dx, dy);
  if (dy != 0) FillView();
}

}  // namespace pallomir
