#include "ui/list_grid_box_widget.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <limits>

namespace pallomir {
namespace {

// Positions are UTF-16 in the widget and UTF-8 in what it is told and tells.
std::size_t BytesBefore(const QString& text, int position) {
  return static_cast<std::size_t>(text.left(position).toUtf8().size());
}

int PositionOf(const std::string& utf8, std::size_t byte) {
  return static_cast<int>(QString::fromStdString(utf8.substr(0, byte)).size());
}

bool HasText(const QKeyEvent& key) {
  return !key.text().isEmpty() && (key.text().front().isPrint() || key.text().front().isSurrogate());
}

Qt::KeyboardModifiers CommandKeys(const QKeyEvent& key) {
  return key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool IsText(const QKeyEvent& key) {
  const Qt::KeyboardModifiers held = CommandKeys(key);
  // Some layouts report their third level as Ctrl+Alt.
  const bool isPlain = held == Qt::NoModifier || held == (Qt::ControlModifier | Qt::AltModifier);
  return isPlain && HasText(key);
}

// The access key of a button that is grey, which Qt would enter as text.
bool IsIdleAccessKey(const QKeyEvent& key) { return CommandKeys(key) == Qt::AltModifier && HasText(key); }

}  // namespace

struct ListGridBox::KeyRule {
  QKeySequence::StandardKey key;
  void (ListGridBox::*action)();
};

const ListGridBox::KeyRule ListGridBox::kKeyRules[] = {
    {QKeySequence::Undo, &ListGridBox::Undo},
    {QKeySequence::Redo, &ListGridBox::Redo},
    {QKeySequence::Cut, &ListGridBox::Cut},
    {QKeySequence::Paste, &ListGridBox::Paste},
    {QKeySequence::DeleteStartOfWord, &ListGridBox::DeleteWordBefore},
    {QKeySequence::DeleteEndOfWord, &ListGridBox::DeleteWordAfter},
    {QKeySequence::DeleteEndOfLine, &ListGridBox::DeleteToEnd},
    {QKeySequence::DeleteCompleteLine, &ListGridBox::DeleteAll},
    {QKeySequence::Backspace, &ListGridBox::Backspace},
    {QKeySequence::Delete, &ListGridBox::Delete},
};

ListGridBox::ListGridBox(QWidget* parent, bool isChoice) : QLineEdit(parent) {
  setReadOnly(isChoice);
  setMaxLength(std::numeric_limits<int>::max());
  // What still reaches the text past this class, an assistive tool for one, is taken back and made a wish.
  connect(this, &QLineEdit::textChanged, this, [this] {
    if (!isShowing_) TakeBack();
  });
}

void ListGridBox::ShowText(const std::string& utf8, std::optional<BoxSpan> span) {
  isShowing_ = true;
  shown_ = QString::fromStdString(utf8);
  if (text() != shown_) {
    setText(shown_);
    if (!span) setCursorPosition(0);
  }
  if (span) {
    const int begin = PositionOf(utf8, span->begin);
    setCursorPosition(begin);
    if (span->end > span->begin) setSelection(begin, PositionOf(utf8, span->end) - begin);
  }
  isShowing_ = false;
}

BoxSpan ListGridBox::Span() const {
  if (!hasSelectedText())
    return {BytesBefore(text(), cursorPosition()), BytesBefore(text(), cursorPosition())};
  return {BytesBefore(text(), selectionStart()), BytesBefore(text(), selectionEnd())};
}

void ListGridBox::Wish(BoxAction action, const QString& text) {
  const bool isEntry = action == BoxAction::kType || action == BoxAction::kPaste;
  if (isReadOnly() || !edit || (isEntry && text.isEmpty())) return;
  edit({action, text.toStdString()}, Span());
}

// The difference of the two texts is what was wanted.
void ListGridBox::TakeBack() {
  const QString wanted = text();
  const auto shorter = std::min(wanted.size(), shown_.size());
  qsizetype head = 0, tail = 0;
  while (head < shorter && wanted[head] == shown_[head]) ++head;
  while (tail < shorter - head && wanted[wanted.size() - 1 - tail] == shown_[shown_.size() - 1 - tail])
    ++tail;
  const BoxSpan span{BytesBefore(shown_, static_cast<int>(head)),
                     BytesBefore(shown_, static_cast<int>(shown_.size() - tail))};
  const QString entered = wanted.mid(head, wanted.size() - head - tail);
  ShowText(shown_.toStdString(), span);
  Wish(entered.isEmpty() ? BoxAction::kDelete : BoxAction::kPaste, entered);
}

void ListGridBox::DeleteWordBefore() {
  if (!hasSelectedText()) cursorWordBackward(true);
  Backspace();
}

void ListGridBox::DeleteWordAfter() {
  if (!hasSelectedText()) cursorWordForward(true);
  Delete();
}

void ListGridBox::DeleteToEnd() {
  if (!hasSelectedText()) end(true);
  Delete();
}

void ListGridBox::DeleteAll() {
  selectAll();
  Delete();
}

void ListGridBox::Cut() {
  if (!hasSelectedText()) return;
  copy();
  Delete();
}

void ListGridBox::Paste() { Wish(BoxAction::kPaste, QApplication::clipboard()->text()); }

// Escape is kept here also where a shortcut of the window would take it.
bool ListGridBox::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void ListGridBox::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter) return event->accept();
  for (const KeyRule& rule : kKeyRules) {
    if (!event->matches(rule.key)) continue;
    (this->*rule.action)();
    return event->accept();
  }
  if (key == Qt::Key_Backspace) return Backspace();  // with Shift too
  if (IsIdleAccessKey(*event)) return event->ignore();
  if (!IsText(*event)) return QLineEdit::keyPressEvent(event);
  event->accept();
  if (isReadOnly() && key == Qt::Key_Space && clicked) return clicked();
  Wish(BoxAction::kType, event->text());
}

// Text that is still being composed lies over the box and is none of it; only what is committed is entered.
void ListGridBox::inputMethodEvent(QInputMethodEvent* event) {
  if (isReadOnly()) return event->ignore();
  if (event->replacementLength() > 0) {
    setSelection(cursorPosition() + event->replacementStart(), event->replacementLength());
    if (event->commitString().isEmpty()) Delete();
  }
  if (!event->commitString().isEmpty()) {
    QInputMethodEvent nothing;
    QLineEdit::inputMethodEvent(&nothing);
    Wish(BoxAction::kType, event->commitString());
  }
  if (!event->preeditString().isEmpty() && hasSelectedText()) Delete();
  QInputMethodEvent composed(event->preeditString(), event->attributes());
  QLineEdit::inputMethodEvent(&composed);
}

void ListGridBox::dropEvent(QDropEvent* event) {
  QDragLeaveEvent over;
  QLineEdit::dragLeaveEvent(&over);
  if (isReadOnly() || !event->mimeData()->hasText()) return event->ignore();
  event->acceptProposedAction();
  const QString text = event->mimeData()->text();
  setFocus(Qt::OtherFocusReason);
  setCursorPosition(cursorPositionAt(event->position().toPoint()));
  Wish(BoxAction::kPaste, text);
}

void ListGridBox::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    setCursorPosition(cursorPositionAt(event->pos()));
    return Wish(BoxAction::kPaste, QApplication::clipboard()->text(QClipboard::Selection));
  }
  QLineEdit::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  // The press that brought the focus has put the cursor somewhere, and so undone the selection.
  if (std::exchange(focusedByPress_, false) && !hasSelectedText() && focused) focused();
  if (clicked && rect().contains(event->pos())) clicked();
}

void ListGridBox::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& caption, bool enabled, auto action) {
    menu->addAction(caption, this, action)->setEnabled(enabled);
  };
  const bool isOpen = !isReadOnly();
  add("&Undo", isOpen, [this] { Undo(); });
  add("&Redo", isOpen, [this] { Redo(); });
  menu->addSeparator();
  add("Cu&t", isOpen && hasSelectedText(), [this] { Cut(); });
  add("&Copy", hasSelectedText(), [this] { copy(); });
  add("&Paste", isOpen && !QApplication::clipboard()->text().isEmpty(), [this] { Paste(); });
  add("&Delete", isOpen && hasSelectedText(), [this] { Delete(); });
  menu->addSeparator();
  add("Select &All", !text().isEmpty(), [this] { selectAll(); });
  menu->popup(event->globalPos());
}

void ListGridBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason) return;
  focusedByPress_ = event->reason() == Qt::MouseFocusReason;
  if (focused) focused();
}

}  // namespace pallomir
