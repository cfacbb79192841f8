#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "ui/list_grid.h"

class QCheckBox;
class QFrame;
class QPushButton;
class QVBoxLayout;

namespace pallomir {

class ListGridBox;
class QuestionQueue;

/// A window with a list grid editor: shows the model, passes it all input. Modeless; deletes itself when it
/// is closed. An editor derives from it and says what Apply does with the rows. Escape does not close it.
class ListGridWidget : public QWidget {
 public:
  ListGridWidget(QWidget* owner, ListGrid grid, QuestionQueue& questions);

  std::function<void()> closed;  ///< by Apply, Cancel or the window's own button

  const ListGrid& Grid() const { return grid_; }

 protected:
  virtual void TakeResult() = 0;

  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct RowWidgets {
    QFrame* frame = nullptr;
    QCheckBox* chkEnabled = nullptr;
    std::vector<ListGridBox*> boxes;
    QWidget* last = nullptr;  // in the order of the Tab key
  };
  class RowsArea;

  QWidget* MakeTitles();
  QWidget* MakeButtons();
  QPushButton* AddButton(const char* name, const QString& caption, std::function<void()> action);
  void AppendRow();
  QCheckBox* MakeCheckBox(std::size_t row, QFrame* frame);
  ListGridBox* MakeBox(std::size_t row, std::size_t column, QFrame* frame);
  void TakeLastRow();

  void ShowRows();
  void ShowRow(std::size_t row);
  void ShowBox(std::size_t row, std::size_t column, std::optional<BoxSpan> span);
  void ShowButtons();
  void FollowRowCount();
  void ResizeBy(int height);
  void FocusBox(std::size_t row, std::size_t column);

  void Edit(std::size_t row, std::size_t column, const BoxEdit& edit, BoxSpan span);
  void BoxFocused(std::size_t row, std::size_t column);
  void BoxClicked(std::size_t row, std::size_t column);
  void ChangeRows(void (ListGrid::*change)(), bool goesToRow);
  void Tell(const Question& refusal);

  ListGrid grid_;
  QuestionQueue& questions_;
  std::vector<RowWidgets> rows_;
  std::size_t focusColumn_ = 0;
  RowsArea* area_;
  QVBoxLayout* rowsLayout_;
  QPushButton* cmdAddRow_;
  QPushButton* cmdDeleteRow_;
  QPushButton* cmdMoveRowUp_;
  QPushButton* cmdMoveRowDn_;
  QPushButton* cmdApply_;
};

}  // namespace pallomir
