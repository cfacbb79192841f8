#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "ui/list_grid.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace pallomir {

struct GridCell;
class ListGridRows;
class QuestionQueue;

/// A window with a list grid editor: shows the model, passes it all input. Modeless; deletes itself when it
/// is closed. An editor derives from it and says what Apply does with the rows. Escape does not close it. The
/// Tab key goes through the current row and on to the buttons, which act on that row.
class ListGridWidget : public QWidget {
 public:
  ListGridWidget(QWidget* owner, ListGrid grid, QuestionQueue& questions);

  std::function<void()> closed;  ///< by Apply, Cancel or the window's own button

  const ListGrid& Grid() const { return grid_; }

 protected:
  virtual void TakeResult() = 0;

  /// For what comes from elsewhere than this window.
  void ChangeGrid(const std::function<void(ListGrid&)>& change);

  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  QHBoxLayout* MakeTitles(QWidget* titles);
  ListGridRows* MakeRows(QHBoxLayout* titles);
  QLabel* MakeNote();
  QWidget* MakeButtons();
  QPushButton* AddButton(const char* name, const QString& caption, std::function<void()> action);

  void ShowAll();
  void ShowButtons();
  void ShowNote();
  void FollowRowCount();
  void ResizeBy(int growth);

  void Edit(GridCell cell, const BoxEdit& edit, BoxSpan span);
  void CellFocused(GridCell cell);
  void CellClicked(GridCell cell);
  void ChangeRows(void (ListGrid::*change)(), bool goesToRow);
  void Tell(const Question& refusal);

  ListGrid grid_;
  QuestionQueue& questions_;
  std::size_t focusColumn_ = 0;
  int hintWidth_ = 0;
  int shownRows_ = 0;  // that the window has room for
  ListGridRows* rows_;
  QLabel* lblSame_ = nullptr;
  std::vector<QPushButton*> buttons_;  // in the order of the Tab key
  QPushButton* cmdAddRow_;
  QPushButton* cmdDeleteRow_;
  QPushButton* cmdMoveRowUp_;
  QPushButton* cmdMoveRowDn_;
  QPushButton* cmdApply_;
};

}  // namespace pallomir
