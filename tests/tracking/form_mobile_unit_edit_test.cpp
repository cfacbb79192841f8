#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "base/number_format.h"
#include "fakes/fake_system.h"
#include "hotspots/formSecureHotSpots_Edit.h"
#include "tracking/formMobileUnit_Edit.h"
#include "ui/question_queue.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class UnitEditorWindowTest : public testing::Test {
 protected:
  UnitEditorWindowTest() { owner_.show(); }

  void Open(int count) {
    std::vector<MobileUnit> units;
    for (int i = 1; i <= count; ++i) units.push_back({i == 1, "0123456789AB", "Van " + std::to_string(i)});
    editor_ = new formMobileUnit_Edit(&owner_, units, questions_);
    editor_->apply = [this](const std::vector<MobileUnit>& list) { applied_.push_back(list); };
    editor_->closed = [this] { ++closed_; };
    editor_->show();
    editor_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor_));
  }

  template <class Widget = QLineEdit>
  Widget* Find(const char* name) {
    Widget* widget = editor_->findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name;
    return widget;
  }
  void Press(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
  static QColor ColourOf(const QLineEdit* box) { return box->palette().color(QPalette::Text); }

  QWidget owner_;
  fakes::FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  QPointer<formMobileUnit_Edit> editor_;
  std::vector<std::vector<MobileUnit>> applied_;
  int closed_ = 0;
};

TEST_F(UnitEditorWindowTest, ARowIsAddedTypedCheckedAndApplied) {
  Open(0);
  Press("cmdAddRow");
  EXPECT_TRUE(Find("txtID(1)")->hasFocus());
  EXPECT_EQ(Find("txtID(1)")->selectedText(), "Add New ID Here");
  EXPECT_EQ(ColourOf(Find("txtID(1)")), QColor(0, 128, 128));
  QTest::keyClicks(Find("txtID(1)"), "0123456789a");
  EXPECT_EQ(ColourOf(Find("txtID(1)")), QColor(255, 0, 0));
  QTest::keyClicks(Find("txtID(1)"), "bc");
  EXPECT_EQ(ColourOf(Find("txtID(1)")), editor_->palette().color(QPalette::Text));
  ASSERT_THAT(box_.shown, SizeIs(1));
  box_.AnswerIt();
  EXPECT_FALSE(Find<QPushButton>("cmdApply")->isEnabled());
  Find<QCheckBox>("chkEnabled(1)")->click();
  Press("cmdApply");
  EXPECT_THAT(applied_, ElementsAre(std::vector<MobileUnit>{{true, "0123456789AB", "Unit #1"}}));
  EXPECT_EQ(closed_, 1);
}

TEST_F(UnitEditorWindowTest, EveryWayInGoesThroughTheRules) {
  Open(1);
  QLineEdit* id = Find("txtID(1)");
  const auto clear = [&] {
    id->selectAll();
    QTest::keyClick(id, Qt::Key_Delete);
  };
  const auto expectTaken = [&](const char* way) {
    EXPECT_EQ(id->text(), "0013A20040B1") << way;
    clear();
  };
  clear();
  QApplication::clipboard()->setText("00:13:a2:00:40:b1\n");
  QTest::keyClick(id, Qt::Key_V, Qt::ControlModifier);
  expectTaken("clipboard");
  QMimeData dragged;
  dragged.setText("00-13-a2-00-40-b1");
  QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(id, &enter);
  QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(id, &drop);
  expectTaken("drop");
  QInputMethodEvent composing("ha", {});
  QApplication::sendEvent(id, &composing);
  EXPECT_EQ(id->text(), "");
  QInputMethodEvent composed("", {});
  composed.setCommitString("0013a20040b1");
  QApplication::sendEvent(id, &composed);
  expectTaken("input method");
  id->insert("0013a20040b1");
  expectTaken("a tool that writes into the box");
  id->undo();
  EXPECT_EQ(id->text(), "") << "the box has no history of its own";
  QTest::keyClick(id, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(id->text(), "0013A20040B1");
  QTest::keyClick(id, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  id->setText("Zoo");
  EXPECT_EQ(id->text(), "");
  EXPECT_THAT(box_.shown, SizeIs(1)) << "one message a paste";
}

TEST_F(UnitEditorWindowTest, FocusSelectsAllAClickAPlaceholderAndTheNextClickSetsTheCursor) {
  Open(2);
  Press("cmdAddRow");
  QLineEdit* placeholder = Find("txtDesc(3)");
  for (int click = 0; click < 2; ++click) {
    QTest::mouseClick(placeholder, Qt::LeftButton, {}, QPoint(30, 8));
    EXPECT_EQ(placeholder->selectedText(), "Enter This Mobile Unit's Description Here");
  }
  QLineEdit* text = Find("txtDesc(2)");
  QTest::mouseClick(text, Qt::LeftButton, {}, QPoint(10, 8));
  EXPECT_EQ(text->selectedText(), "Van 2");
  QTest::mouseClick(text, Qt::LeftButton, {}, QPoint(10, 8));
  EXPECT_FALSE(text->hasSelectedText());
  QTest::keyClick(text, Qt::Key_End);
  QTest::keyClick(text, Qt::Key_Left, Qt::ShiftModifier);
  QTest::sendKeyEvent(QTest::Click, text, Qt::Key_Eacute, QString("é"), Qt::NoModifier);
  EXPECT_EQ(text->text(), "Van é");
}

TEST_F(UnitEditorWindowTest, TabGoesThroughTheRowAndOnToTheButtonsThatActOnIt) {
  Open(3);
  Find<QCheckBox>("chkEnabled(2)")->setFocus();
  QStringList seen;
  for (int i = 0; i < 10; ++i) {
    seen += editor_->focusWidget()->objectName();
    EXPECT_FALSE(editor_->focusWidget()->accessibleName().isEmpty() &&
                 !qobject_cast<QPushButton*>(editor_->focusWidget()));
    QTest::keyClick(editor_->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(seen.join(" ").toStdString(),
            "chkEnabled(2) txtID(2) txtDesc(2) cmdAddRow cmdDeleteRow cmdMoveRowUp cmdMoveRowDn cmdApply "
            "cmdCancel chkEnabled(2)");
  for (int i = 0; i < 3; ++i) QTest::keyClick(editor_->focusWidget(), Qt::Key_Backtab);
  EXPECT_EQ(editor_->focusWidget()->objectName(), "cmdApply");
}

TEST_F(UnitEditorWindowTest, ArrowsWalkTheRowsAndAccessKeysActOnTheCurrentOne) {
  Open(30);
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(editor_->focusWidget(), key, held);
    return editor_->focusWidget()->objectName().toStdString();
  };
  EXPECT_EQ(press(Qt::Key_Up), "txtID(1)");
  EXPECT_EQ(press(Qt::Key_Down), "txtID(2)");
  EXPECT_EQ(press(Qt::Key_Tab), "txtDesc(2)");
  EXPECT_EQ(press(Qt::Key_End, Qt::ControlModifier), "txtDesc(30)");
  EXPECT_EQ(press(Qt::Key_PageUp), "txtDesc(19)");
  EXPECT_EQ(press(Qt::Key_U, Qt::AltModifier), "txtDesc(18)");
  EXPECT_EQ(press(Qt::Key_N, Qt::AltModifier), "txtDesc(19)");
  EXPECT_EQ(press(Qt::Key_D, Qt::AltModifier), "txtDesc(19)");
  EXPECT_EQ(Find("txtDesc(19)")->text(), "Van 20");
  EXPECT_EQ(press(Qt::Key_Home, Qt::ControlModifier), "txtDesc(1)");
  ASSERT_FALSE(Find<QPushButton>("cmdMoveRowUp")->isEnabled());
  press(Qt::Key_U, Qt::AltModifier);
  EXPECT_EQ(Find("txtDesc(1)")->text(), "Van 1") << "the letter of a grey button is no text";
  EXPECT_EQ(press(Qt::Key_R, Qt::AltModifier), "txtID(30)");
  press(Qt::Key_D, Qt::AltModifier);
  press(Qt::Key_A, Qt::AltModifier);
  EXPECT_THAT(applied_, ElementsAre(SizeIs(29)));
}

TEST_F(UnitEditorWindowTest, EscapeAndEnterInABoxDoNothing) {
  Open(2);
  QLineEdit* id = Find("txtID(1)");
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) QTest::keyClick(id, key);
  QTest::keyClick(Find<QPushButton>("cmdAddRow"), Qt::Key_Escape);
  EXPECT_TRUE(editor_ && editor_->isVisible() && id->hasFocus());
  QTest::keyClick(Find<QPushButton>("cmdCancel"), Qt::Key_Space);
  EXPECT_TRUE(applied_.empty());
  EXPECT_EQ(closed_, 1);
}

TEST_F(UnitEditorWindowTest, RowsMoveAndGoAndTheKeyboardDoesNotSlipToAnotherButton) {
  Open(3);
  Find("txtDesc(2)")->setFocus();
  const int height = editor_->height();
  auto* up = Find<QPushButton>("cmdMoveRowUp");
  up->setFocus();
  QTest::keyClick(up, Qt::Key_Space);
  EXPECT_EQ(Find("txtDesc(1)")->text(), "Van 2");
  EXPECT_TRUE(Find("txtDesc(1)")->hasFocus()) << "the row can't go further";
  for (int i = 0; i < 3; ++i) Press("cmdAddRow");
  EXPECT_GT(editor_->height(), height);
  for (int i = 0; i < 4; ++i) Press("cmdDeleteRow");
  EXPECT_EQ(editor_->height(), height);
}

TEST_F(UnitEditorWindowTest, AFullListHasWidgetsForTheRowsInView) {
  Open(9998);
  const auto boxes = [&] { return editor_->findChildren<QLineEdit*>(QRegularExpression("^txtID")).size(); };
  EXPECT_LE(boxes(), 14);
  Press("cmdAddRow");
  QTest::keyClicks(Find("txtID(9999)"), "0123456789ac");
  EXPECT_FALSE(Find<QPushButton>("cmdAddRow")->isEnabled());
  QTest::keyClick(Find("txtID(9999)"), Qt::Key_Home, Qt::ControlModifier);
  EXPECT_LE(boxes(), 14);
}

TEST_F(UnitEditorWindowTest, ABoxThatIsScrolledAwayKeepsTheKeyboardAndItsRow) {
  Open(40);
  QLineEdit* third = Find("txtDesc(3)");
  third->setFocus();
  auto* area = editor_->findChild<QScrollArea*>();
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
  EXPECT_TRUE(editor_->findChild<QLineEdit*>("txtDesc(40)"));
  EXPECT_FALSE(editor_->findChild<QLineEdit*>("txtDesc(4)"));
  QTest::keyClicks(third, "x");
  EXPECT_EQ(editor_->Grid().Row(3).texts[1], "x");
  const QRect row(third->mapTo(area->viewport(), QPoint()), third->size());
  EXPECT_TRUE(area->viewport()->rect().contains(row)) << "what is typed into comes back into view";
}

TEST_F(UnitEditorWindowTest, TheSameIdTwiceAndMoreEnabledUnitsThanARequestNamesArePointedOut) {
  std::vector<MobileUnit> units;
  for (int i = 0; i < 5459; ++i)
    units.push_back({i > 0, HexDigits(static_cast<std::uint64_t>(i), 12), "Van"});
  editor_ = new formMobileUnit_Edit(&owner_, units, questions_);
  auto* note = Find<QLabel>("lblSame");
  EXPECT_EQ(note->text(), "");
  units[0].enabled = true;
  editor_->ShowFlags(units);
  EXPECT_EQ(note->text(), "5459 rows are checked, 5458 can be: a request for data names no more units");
  delete editor_;
  Open(3);
  note = Find<QLabel>("lblSame");
  EXPECT_EQ(note->text(), "Same ID in rows 1, 2, 3: the first enabled one receives the data");
  EXPECT_EQ(Find("txtID(2)")->toolTip(), "The same as in row 1");
}

TEST_F(UnitEditorWindowTest, EveryPlaceholderCanBeReadWhereTheScreenHasRoom) {
  formSecureHotSpots_Edit editor(&owner_, {}, questions_);
  editor.setAttribute(Qt::WA_DeleteOnClose, false);
  editor.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
  for (const QLineEdit* box : editor.findChildren<QLineEdit*>())
    EXPECT_LT(box->fontMetrics().horizontalAdvance(box->text()), box->width()) << box->text().toStdString();
}

TEST_F(UnitEditorWindowTest, ColoursStayReadableOnADarkDesktop) {
  Open(1);
  Press("cmdAddRow");
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, QColor(240, 240, 240));
  editor_->setPalette(dark);
  QTest::keyClick(Find("txtID(1)"), Qt::Key_Backspace);
  for (const char* name : {"txtID(1)", "txtID(2)", "txtDesc(1)"}) {
    Find(name)->setFocus();
    EXPECT_GT(ColourOf(Find(name)).lightness(), 140) << name;
  }
}

TEST_F(UnitEditorWindowTest, TheAnswerToAMessageMayComeAfterTheWindowIsGone) {
  Open(1);
  QTest::keyClicks(Find("txtID(1)"), "x");
  Press("cmdCancel");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(editor_);
  box_.AnswerIt();
  EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace pallomir
