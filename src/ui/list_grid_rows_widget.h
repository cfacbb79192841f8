#pragma once

#include <QScrollArea>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "ui/list_grid.h"

class QCheckBox;
class QFrame;
class QHBoxLayout;

namespace pallomir {

class ListGridBox;

/// A cell of the list grid: its row from 1, and its column from 0 or kCheckBoxColumn.
struct GridCell {
  std::size_t row = 0;
  std::size_t column = 0;
};
inline constexpr std::size_t kCheckBoxColumn = std::numeric_limits<std::size_t>::max();

/// The scrolled rows of a list grid. Widgets exist only for the rows in view, and for the one that has the
/// keyboard; each belongs to its row for life. The arrow keys, Page Up and Down, and Ctrl with Home and End
/// go from row to row in a column.
class ListGridRows : public QScrollArea {
 public:
  /// The grid outlives this widget. `titles` is kept as wide as the rows beside the scroll bar.
  ListGridRows(QWidget* parent, const ListGrid& grid, QHBoxLayout* titles);

  // What the user does with a cell.
  std::function<void(GridCell)> focused;
  std::function<void(GridCell)> clicked;
  std::function<void(GridCell, const BoxEdit&, BoxSpan)> edit;
  std::function<void(std::size_t row, bool checked)> checked;

  /// Rows have come, gone or changed places: all are shown again.
  void FollowGrid();
  void ShowBox(GridCell cell, std::optional<BoxSpan> span);
  /// What a row says about its texts may follow from other rows.
  void ShowMarks();

  /// Scrolls the row into view.
  void Reveal(std::size_t row);
  /// Gives the cell the keyboard; one that can't have it passes it on to its row's first box.
  void FocusCell(GridCell cell);
  std::optional<GridCell> FocusedCell() const;
  /// The row's cells in the order of the Tab key; the row is brought into view.
  std::vector<QWidget*> CellsOf(std::size_t row);

  int RowHeight() const { return rowHeight_; }
  /// Height without scroll bar for so many rows.
  int HeightOf(int rows) const { return rows * rowHeight_ + 2 * frameWidth(); }
  void SetHint(const QSize& hint) { hint_ = hint; }
  QSize sizeHint() const override { return hint_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct RowWidgets {
    QFrame* frame = nullptr;
    QCheckBox* chkEnabled = nullptr;
    std::vector<ListGridBox*> boxes;
  };
  using Rows = std::map<std::size_t, RowWidgets>;

  RowWidgets MakeRow(std::size_t row, QWidget* parent);
  QCheckBox* MakeCheckBox(std::size_t row, QFrame* frame);
  ListGridBox* MakeBox(GridCell cell, QFrame* frame);
  Rows::iterator Drop(Rows::iterator row);
  void LayOut();
  void FillView();
  RowWidgets& Need(std::size_t row);
  void Place(std::size_t row);
  void ShowRow(std::size_t row);
  void ShowMark(std::size_t row, std::size_t column);
  std::optional<GridCell> CellOf(const QObject* widget) const;
  bool Walk(GridCell from, int key, Qt::KeyboardModifiers modifiers);

  const ListGrid& grid_;
  QHBoxLayout* titles_;
  Rows rows_;
  QSize rowHint_;
  int rowHeight_ = 0;
  QSize hint_;
};

/// Cells of a row and of the titles stand under each other because both are laid out by these: widths are
/// characters, 0 takes the room that is left.
inline constexpr int kRowNumberWidth = 5;
QHBoxLayout* MakeGridCells(QWidget* parent);
void AddGridCell(QHBoxLayout* cells, QWidget* cell, int characters);
int GridCellWidth(const QWidget& cell, int characters);

}  // namespace pallomir
