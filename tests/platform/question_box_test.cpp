#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include "platform/qt/qt_question_box.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

using Kind = Question::Kind;

/// Keeps events of a kind from a widget, and from every filter that was there before.
class Swallow : public QObject {
 public:
  Swallow(QObject& from, QEvent::Type type) : from_(from), type_(type) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    return watched == &from_ && event->type() == type_;
  }

 private:
  QObject& from_;
  QEvent::Type type_;
};

class QuestionBoxTest : public testing::Test {
 protected:
  QuestionBoxTest() { window_.show(); }

  void Show(Kind kind, const std::string& text = "Delete?", const std::string& defaultText = "") {
    box_.Show({kind, Question::Icon::kQuestion, "Pallomir", text, defaultText},
              [this](const Answer& answer) { answers_.push_back(answer); });
  }
  QDialog* Open() { return window_.findChild<QDialog*>("questionBox"); }
  /// Its dialog is gone then.
  Answer WaitForAnswer() {
    EXPECT_TRUE(WaitFor([&] { return !answers_.empty(); }));
    DeleteClosed();
    EXPECT_EQ(answers_.size(), 1u);
    return std::exchange(answers_, {}).at(0);
  }
  static void DeleteClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  QWidget window_;
  QtQuestionBox box_{&window_};
  std::vector<Answer> answers_;
};

TEST_F(QuestionBoxTest, EachButtonAndEachWayOutGivesItsAnswer) {
  const struct {
    Kind kind;
    QMessageBox::StandardButton button;  // NoButton: the Escape key
    bool yes;
  } cases[] = {
      {Kind::kMessage, QMessageBox::Ok, true},         {Kind::kYesNo, QMessageBox::Yes, true},
      {Kind::kYesNo, QMessageBox::No, false},          {Kind::kYesNo, QMessageBox::NoButton, false},
      {Kind::kOkCancel, QMessageBox::Ok, true},        {Kind::kOkCancel, QMessageBox::Cancel, false},
      {Kind::kOkCancel, QMessageBox::NoButton, false},
  };
  for (const auto& row : cases) {
    Show(row.kind);
    auto* dialog = qobject_cast<QMessageBox*>(Open());
    ASSERT_TRUE(dialog);
    for (auto* button : dialog->buttons()) EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus);
    if (row.button == QMessageBox::NoButton) {
      QTest::keyClick(dialog, Qt::Key_Escape);
    } else {
      QTest::mouseClick(dialog->button(row.button), Qt::LeftButton);
    }
    EXPECT_EQ(WaitForAnswer().yes, row.yes);
    EXPECT_FALSE(Open());
  }
}

TEST_F(QuestionBoxTest, InputGivesItsTextOrNothing) {
  for (const bool isTaken : {true, false}) {
    Show(Kind::kInput, "Enter timezone offset:", "5.0");
    auto* line = Open()->findChild<QLineEdit*>("questionText");
    EXPECT_EQ(line->text(), "5.0");
    line->setText("6.5");
    QTest::keyClick(line, isTaken ? Qt::Key_Return : Qt::Key_Escape);
    const Answer answer = WaitForAnswer();
    EXPECT_EQ(answer.yes, isTaken);
    EXPECT_EQ(answer.text, isTaken ? "6.5" : "");
  }
}

TEST_F(QuestionBoxTest, TextIsNoMarkUp) {
  for (const Kind kind : {Kind::kMessage, Kind::kInput}) {
    Show(kind, "<b>Depot</b> & <img src='file:///etc/passwd'>");
    for (auto* label : Open()->findChildren<QLabel*>()) {
      if (label->text().contains("Depot")) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(label->text().contains("&&"), label->buddy() != nullptr) << "no access key";
      }
    }
    box_.Dismiss();
    DeleteClosed();
  }
}

TEST_F(QuestionBoxTest, DismissedOneIsNotAnswered) {
  Show(Kind::kYesNo);
  box_.Dismiss();
  DeleteClosed();
  LetPass(10);
  EXPECT_FALSE(Open());
  EXPECT_TRUE(answers_.empty());
}

TEST_F(QuestionBoxTest, HandlerMayAskAgainAndAReplacedQuestionIsStillAnswered) {
  std::vector<std::string> order;
  box_.Show({Kind::kYesNo, {}, "", "first", ""}, [&](const Answer& answer) {
    order.push_back(answer.yes ? "first yes" : "first no");
    Show(Kind::kMessage, "third");
  });
  box_.Show({Kind::kYesNo, {}, "", "second", ""}, [&](const Answer&) { order.push_back("second"); });
  EXPECT_TRUE(WaitFor([&] { return order.size() == 2; }));
  EXPECT_THAT(order, testing::ElementsAre("first no", "second"));
  DeleteClosed();
  QTest::keyClick(Open(), Qt::Key_Return);
  EXPECT_TRUE(WaitForAnswer().yes);
}

TEST_F(QuestionBoxTest, ABoxStandsOverTheWindowThatHasTheKeyboardAndOutlivesIt) {
  for (const Kind kind : {Kind::kMessage, Kind::kInput}) {
    QWidget editor(&window_, Qt::Dialog);
    editor.show();
    editor.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    Show(kind, "Delete?", "before");
    QDialog* over = editor.findChild<QDialog*>("questionBox", Qt::FindDirectChildrenOnly);
    ASSERT_TRUE(over);
    ASSERT_TRUE(QTest::qWaitForWindowActive(over));
    if (kind == Kind::kInput) over->findChild<QLineEdit*>("questionText")->setText("typed");
    editor.hide();
    QDialog* left = window_.findChild<QDialog*>("questionBox", Qt::FindDirectChildrenOnly);
    ASSERT_TRUE(left);
    EXPECT_TRUE(left->isVisible());
    EXPECT_TRUE(answers_.empty());
    QTest::keyClick(left, Qt::Key_Return);
    EXPECT_EQ(WaitForAnswer().text, kind == Kind::kInput ? "typed" : "");
  }
}

TEST_F(QuestionBoxTest, ABoxLeavesTheKeyboardToAnotherProgramAndStillBlocksTheWindow) {
  QLineEdit line(&window_);
  line.show();
  for (const Kind kind : {Kind::kMessage, Kind::kInput}) {
    for (const bool isElsewhere : {false, true}) {
      line.clear();
      window_.activateWindow();
      ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
      if (isElsewhere) QApplication::setActiveWindow(nullptr);
      Show(kind, "The map was lost", "before");
      QDialog* dialog = Open();
      ASSERT_TRUE(dialog && dialog->isVisible());
      EXPECT_FALSE(dialog->isModal());
      EXPECT_EQ(dialog->windowHandle()->property("_q_showWithoutActivating").toBool(), isElsewhere);
      ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
      window_.activateWindow();
      LetPass(10);
      EXPECT_TRUE(dialog->isActiveWindow()) << "the window hands the keyboard on";
      const Swallow refusal(window_, QEvent::WindowActivate);
      window_.activateWindow();
      LetPass(10);
      EXPECT_FALSE(dialog->isActiveWindow()) << "the window manager may refuse that";
      QTest::keyClick(&line, Qt::Key_A);
      EXPECT_EQ(line.text(), "");
      QTest::mouseClick(&line, Qt::LeftButton);
      LetPass(10);
      EXPECT_TRUE(dialog->isActiveWindow()) << "and asks again for it at the next click";
      QTest::keyClick(dialog, Qt::Key_Return);
      EXPECT_TRUE(WaitForAnswer().yes);
      QTest::keyClick(&line, Qt::Key_A);
      EXPECT_EQ(line.text(), "a");
    }
  }
}

TEST_F(QuestionBoxTest, ABoxThatComesBesideAModalWindowStandsOverThatOne) {
  QDialog options(&window_);
  options.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&options));
  QApplication::setActiveWindow(nullptr);
  Show(Kind::kMessage);
  EXPECT_TRUE(options.findChild<QDialog*>("questionBox", Qt::FindDirectChildrenOnly));
}

TEST_F(QuestionBoxTest, ALongTextLeavesTheButtonsOnTheScreen) {
  std::string text = "first\r\n" + std::string(5000, 'w') + "\r\n";
  for (int i = 0; i < 500; ++i) text += "line\r\n";
  Show(Kind::kMessage, text + "last");
  QDialog* dialog = Open();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
  const QSize screen = dialog->screen()->size();
  EXPECT_LE(dialog->height(), screen.height());
  EXPECT_LE(dialog->width(), screen.width());
  const auto* area = dialog->findChild<QScrollArea*>();
  ASSERT_TRUE(area);
  EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
  EXPECT_FALSE(area->findChild<QLabel*>()->text().contains('\r'));
}

TEST_F(QuestionBoxTest, NoBoxIsWiderThanTwoThirdsOfTheScreenAndNoWordIsCutOff) {
  std::string sentence;
  for (int i = 0; i < 40; ++i) sentence += "nine words ";
  for (const Kind kind : {Kind::kMessage, Kind::kInput}) {
    for (const std::string& text : {sentence, std::string(400, 'w')}) {
      Show(kind, text);
      QDialog* dialog = Open();
      ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
      EXPECT_LE(dialog->width(), dialog->screen()->size().width() * 2 / 3);
      for (const auto* label : dialog->findChildren<QLabel*>()) {
        const QRect needed =
            label->fontMetrics().boundingRect(label->contentsRect(), Qt::TextWordWrap, label->text());
        EXPECT_LE(needed.width(), label->width());
        EXPECT_LE(needed.height(), label->height());
      }
      box_.Dismiss();
      DeleteClosed();
    }
  }
}

}  // namespace
}  // namespace pallomir
