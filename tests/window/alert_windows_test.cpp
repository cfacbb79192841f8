#include <QDialog>
#include <QToolButton>

#include "alerts/formPersist.h"
#include "platform/qt/qt_question_box.h"
#include "platform/wait.h"
#include "tracking/FormRetryAfterError.h"
#include "window/alert_windows_widget.h"
#include "window/window_harness.h"

// The window of a persistent alert beside the others, and the mute button.

namespace pallomir {
namespace {

using testing::SizeIs;

class AlertWindowsTest : public WindowHarness {
 protected:
  void Show() {
    windows_.ShowPersist([this] { ++closed_; });
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == "formPersist") persist_ = widget;
    ASSERT_TRUE(persist_ && QTest::qWaitForWindowExposed(persist_));
  }
  void StartAndShow() {
    Start();
    Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(persist_));
  }
  static bool BecomesActive(QWidget* widget) {
    return WaitFor([&] { return QApplication::activeWindow() == widget; }, 3000);
  }
  /// As the system delivers it: to the window, unless another one keeps input from it.
  void Click(QWidget* widget) {
    QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(widget->window(), widget->rect().center()));
  }
  void SendKey(QWidget* widget, QEvent::Type type, int key, bool isRepeat) {
    QKeyEvent event(type, key, Qt::NoModifier, key == Qt::Key_R ? "r" : "", isRepeat);
    QApplication::sendEvent(widget, &event);
  }

  AlertWindows windows_{window_};
  QPointer<QWidget> persist_;
  int closed_ = 0;
};

TEST_F(AlertWindowsTest, ThePersistentWindowLiesOverTheMiddle) {
  StartAndShow();
  const QPoint off = persist_->frameGeometry().center() - window_.geometry().center();
  EXPECT_LE(off.manhattanLength(), 8) << "but for the frame";
  windows_.HidePersist();
  EXPECT_FALSE(persist_->isVisible());
  EXPECT_EQ(closed_, 0) << "nobody closed it";
}

TEST_F(AlertWindowsTest, AnyKeyOrButtonClosesIt) {
  StartAndShow();
  const std::function<void()> ways[] = {
      [&] { SendKey(persist_, QEvent::KeyPress, Qt::Key_Shift, false); },
      [&] { SendKey(persist_, QEvent::KeyPress, Qt::Key_Tab, false); },
      [&] { Click(persist_); },
      [&] { Click(persist_->findChild<QLabel*>()); },
      [&] { QTest::mouseClick(persist_, Qt::RightButton); },
      [&] { persist_->close(); },
  };
  int count = 0;
  for (const auto& way : ways) {
    windows_.ShowPersist([this] { ++closed_; });
    SendKey(persist_, QEvent::KeyPress, Qt::Key_A, true);
    EXPECT_TRUE(persist_->isVisible()) << "a key held since before";
    way();
    EXPECT_FALSE(persist_->isVisible()) << count;
    EXPECT_EQ(closed_, ++count);
  }
}

TEST_F(AlertWindowsTest, TheKeyThatClosesItIsNoHotKeyHoweverLongItIsHeld) {
  StartAndShow();
  const std::size_t asked = ports_.locator.sent.size();
  SendKey(persist_, QEvent::KeyPress, Qt::Key_R, false);
  ASSERT_TRUE(BecomesActive(&window_));
  // The system does not mark all repeats as such.
  for (const bool isMarked : {true, false, true, false}) {
    SendKey(&window_, QEvent::KeyRelease, Qt::Key_R, isMarked);
    SendKey(&window_, QEvent::KeyPress, Qt::Key_R, isMarked);
  }
  SendKey(&window_, QEvent::KeyRelease, Qt::Key_R, false);
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked));
  LetPass(150);
  SendKey(&window_, QEvent::KeyPress, Qt::Key_R, false);
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked + 1)) << "pressed anew it is one";
}

TEST_F(AlertWindowsTest, ItTakesTheKeyboardBackFromTheMainWindowOnly) {
  StartAndShow();
  window_.activateWindow();
  ASSERT_TRUE(BecomesActive(&window_));
  EXPECT_TRUE(BecomesActive(persist_));
  {
    QMenu menu(&window_);
    menu.addAction("Entry");
    window_.activateWindow();
    ASSERT_TRUE(BecomesActive(&window_));
    menu.popup(window_.mapToGlobal(QPoint(10, 10)));
    ASSERT_TRUE(WaitFor([&] { return menu.isVisible(); }));
    LetPass(250);
    EXPECT_TRUE(menu.isVisible());
    EXPECT_NE(QApplication::activeWindow(), persist_);
    menu.close();
    EXPECT_TRUE(BecomesActive(persist_)) << "once the menu has closed";
  }
  QDialog editor(&window_);
  editor.show();
  editor.activateWindow();
  ASSERT_TRUE(BecomesActive(&editor));
  LetPass(250);
  EXPECT_EQ(QApplication::activeWindow(), &editor);
}

TEST_F(AlertWindowsTest, BesideARetryDialogAndAMessageEachCanBeAnswered) {
  Start();
  window_.ShowRetry("Error 855711/10060");
  auto* retry = Find<FormRetryAfterError>("FormRetryAfterError");
  retry->activateWindow();
  ASSERT_TRUE(BecomesActive(retry));
  Show();
  EXPECT_TRUE(persist_->testAttribute(Qt::WA_ShowWithoutActivating)) << "the keyboard stays where it was";
  QtQuestionBox questions(&window_);
  persist_->activateWindow();
  ASSERT_TRUE(BecomesActive(persist_));
  bool isAnswered = false;
  Question question;
  question.text = "A message";
  questions.Show(question, [&](const Answer&) { isAnswered = true; });
  auto* message = window_.findChild<QDialog*>("questionBox", Qt::FindDirectChildrenOnly);
  ASSERT_TRUE(message) << "over the main window, not over one that any key closes";
  ASSERT_TRUE(BecomesActive(message));
  LetPass(250);
  EXPECT_TRUE(message->isActiveWindow());
  QTest::mousePress(persist_->windowHandle(), Qt::LeftButton);
  QTest::mouseRelease(window_.windowHandle(), Qt::LeftButton);  // where the window was
  EXPECT_EQ(closed_, 1);
  Click(message->findChild<QPushButton*>());
  EXPECT_TRUE(WaitFor([&] { return isAnswered; }));
  bool hasRetried = false;
  retry->retryNow = [&] { hasRetried = true; };
  Click(retry->findChild<QPushButton*>("cmdRetryNow"));
  EXPECT_TRUE(hasRetried);
}

TEST_F(AlertWindowsTest, TheMuteButtonShowsHowItStandsAndOpensItsMenu) {
  Start();
  windows_.Attach(client_->Menus());
  auto* button = Find<QToolButton>("pctMute");
  auto* word = Find<QLabel>("lblMute");
  windows_.ShowMute(true, "Muted until tomorrow");
  EXPECT_EQ(button->accessibleName(), "Muted until tomorrow");
  EXPECT_TRUE(word->isVisible());
  windows_.ShowMute(false, "");
  EXPECT_FALSE(word->isVisible());
  EXPECT_EQ(button->accessibleName(), "Alerts are heard");
  const QWidget* next = button->nextInFocusChain();
  while (!(next->focusPolicy() & Qt::TabFocus)) next = next->nextInFocusChain();
  EXPECT_EQ(next->objectName(), "picLamp");
  button->click();
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  EXPECT_THAT(menu->actions(), SizeIs(4));
  menu->close();
}

}  // namespace
}  // namespace pallomir
