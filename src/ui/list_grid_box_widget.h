#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

#include "ui/box_edit.h"

namespace pallomir {

/// A text box that changes nothing itself: whatever wants to change its text (keys, clipboard, drop, input
/// method, undo, middle click, an assistive tool) is told as a wish, and the owner then shows the text.
class ListGridBox : public QLineEdit {
 public:
  /// A choice is not typed into: click and space bar take the next one.
  ListGridBox(QWidget* parent, bool isChoice);

  std::function<void(const BoxEdit&, BoxSpan)> edit;
  std::function<void()> focused;  ///< it took the keyboard; not when its window merely became active again
  std::function<void()> clicked;

  /// Without a span the selection stays, or is lost with the text it was in.
  void ShowText(const std::string& utf8, std::optional<BoxSpan> span);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  struct KeyRule;
  static const KeyRule kKeyRules[];

  BoxSpan Span() const;
  void Wish(BoxAction action, const QString& text = {});
  void Undo() { Wish(BoxAction::kUndo); }
  void Redo() { Wish(BoxAction::kRedo); }
  void Backspace() { Wish(BoxAction::kBackspace); }
  void Delete() { Wish(BoxAction::kDelete); }
  void DeleteWordBefore();
  void DeleteWordAfter();
  void DeleteToEnd();
  void DeleteAll();
  void Cut();
  void Paste();
  void TakeBack();

  QString shown_;
  bool isShowing_ = false;
  bool focusedByPress_ = false;
};

}  // namespace pallomir
