#include <QDateTimeEdit>
#include <QLineEdit>
#include <cstdlib>

#include "tracking/FormRetryAfterError.h"
#include "window/window_harness.h"

// What the user sees and does in the main window.

namespace pallomir {
namespace {

using testing::SizeIs;
using FormMainTest = WindowHarness;

TEST_F(FormMainTest, TheMapFillsTheWindowAboveTheTimelineAndIsWiderThanItsPart) {
  Start();
  EXPECT_EQ(map_->width(), window_.width() + 18);
  auto* caption = Find<QWidget>("captionLine");
  EXPECT_EQ(caption->height() + map_->height() + Find<QFrame>("frameTimeLine")->height(), window_.height());
  // The page uses all of the browser but 18 pixels; marks are reckoned from its middle.
  const QRect page = map_->geometry().adjusted(0, 0, -18, 0);
  EXPECT_EQ(page, map_->parentWidget()->rect()) << "no strips, and one middle";
  EXPECT_EQ(map_->mapTo(&window_, QPoint()), QPoint(0, caption->height()));
  window_.resize(1000, 700);
  EXPECT_TRUE(QTest::qWaitFor([&] { return map_->width() == 1018; }));
  EXPECT_EQ(ports_.browser.Written("TxtX").back(), "997");
}

TEST_F(FormMainTest, TheTextsOfPointsGoWhenThePointerLeavesTheMap) {
  Start();
  ports_.Connect();
  ports_.Command("S1");
  ports_.Arrive(EncodePacket("0123456789AB", std::vector{fakes::Record(0, 40.62, -75.37)}));
  client_->Marks().PointerOverCaption(300);
  auto* infos = Find<QWidget>("pointInfos");
  EXPECT_TRUE(infos->isVisible());
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(map_->parentWidget(), &leave);
  EXPECT_FALSE(infos->isVisible());
}

TEST_F(FormMainTest, KeysReachTheClientWhicheverControlHasTheFocus) {
  Start();
  const std::size_t asked = ports_.locator.sent.size();
  QTest::keyClick(window_.focusWidget() ? window_.focusWidget() : &window_, Qt::Key_R);
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked + 1));
  Find<QPushButton>("lblMenu")->setFocus();
  QTest::keyClick(Find<QPushButton>("lblMenu"), Qt::Key_2);
  EXPECT_EQ(client_->Units().Book().requestText, "D0123456789AC");
  const int beeps = ports_.beeper.beeps;
  QTest::keyClick(&window_, Qt::Key_A, Qt::AltModifier);
  QTest::keyClick(&window_, Qt::Key_2, Qt::KeypadModifier);
  EXPECT_EQ(ports_.beeper.beeps, beeps);
}

TEST_F(FormMainTest, TheFocusHolderTakesTheKeyboardBackButNotFromAPicker) {
  Start();
  auto* holder = Find<QCheckBox>("FocusGetter");
  map_->setFocusPolicy(Qt::StrongFocus);
  map_->setFocus();
  EXPECT_EQ(window_.focusWidget(), map_);
  ports_.loop.Advance(250);
  EXPECT_EQ(window_.focusWidget(), holder);
  auto* start = Find<QDateTimeEdit>("DTP(0)");
  start->setFocus();
  ports_.loop.Advance(1000);
  EXPECT_EQ(window_.focusWidget(), start);
}

TEST_F(FormMainTest, EscapeCancelsADrawingUnlessItClosesAHelpFirst) {
  Start();
  ports_.Command("S99");
  ports_.loop.Advance(500);
  const auto cancels = [&] {
    QTest::keyClick(window_.focusWidget() ? window_.focusWidget() : &window_, Qt::Key_Escape);
    return ports_.browser.Written("TxtZC").size();
  };
  EXPECT_EQ(cancels(), 0u) << "nothing is drawn";
  MenuItem add;
  add.command = Command::kAddZone;
  client_->MenuChosen(add);
  ports_.zonesView.Press("Edit Shape");
  ASSERT_THAT(ports_.browser.Written("TxtZN"), SizeIs(1));
  Find<QAbstractButton>("pctHelp_1")->click();
  EXPECT_EQ(cancels(), 0u) << "the help goes first";
  EXPECT_FALSE(Find<QFrame>("pctKeyboard")->isVisible());
  EXPECT_EQ(cancels(), 1u);
  QTest::keyClick(&window_, Qt::Key_F6);
  EXPECT_EQ(cancels(), 1u) << "it leaves the window's controls";
  EXPECT_EQ(cancels(), 2u);
  QTest::keyClick(&window_, Qt::Key_F10);
  ASSERT_TRUE(QApplication::activePopupWidget());
  QApplication::activePopupWidget()->close();
  EXPECT_EQ(cancels(), 3u) << "the menu is no control to leave";
}

TEST_F(FormMainTest, APickerShowsItsValueShortAndLoadsWhatIsTyped) {
  Start();
  auto* start = Find<QDateTimeEdit>("DTP(0)");
  auto* reload = Find<QPushButton>("cmdOK_Reload");
  EXPECT_EQ(start->text(), "Sun,Nov22, 3 AM");
  EXPECT_FALSE(reload->isVisible());
  start->setFocus();
  start->setSelectedSection(QDateTimeEdit::HourSection);
  QTest::keyClick(start, Qt::Key_Up);
  EXPECT_TRUE(reload->isVisible());
  const std::size_t asked = ports_.locator.sent.size();
  QTest::mouseClick(reload, Qt::LeftButton);
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked + 1));
  EXPECT_EQ(client_->Window().start, ToMillis({2026, 11, 22, 4}));
  EXPECT_EQ(client_->Window().Length(), kDay);
  EXPECT_FALSE(reload->isVisible());
}

TEST_F(FormMainTest, AHelpStaysWhileThePointerGoesToIt) {
  Start();
  for (const auto& [button, picture] : {std::pair{"pctHelp_1", "pctKeyboard"}, {"pctHelp_2", "pctKeyList"}}) {
    auto* help = Find<QFrame>(picture);
    Find<QAbstractButton>(button)->click();
    ports_.Command("m00820000100024372000-045240000012");
    ports_.Command("m00820000100024372000-045240000012");  // each second one counts
    ports_.Command("m00700000400024372000-045240000012");
    EXPECT_TRUE(help->isVisible()) << picture;
    ports_.Command("m00700000400024372000-045240000012");
    ports_.Command("m00750000400024372000-045240000012");
    EXPECT_FALSE(help->isVisible()) << picture;
    ports_.Command("m00750000400024372000-045240000012");
  }
}

TEST_F(FormMainTest, TheRetryDialogKeepsInputFromTheWindowAndAnswers) {
  Start();
  auto* dialog = Find<FormRetryAfterError>("FormRetryAfterError");
  ports_.data.failed({10054, "The connection was reset.", 104});
  EXPECT_TRUE(dialog->isVisible());
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
  QTest::mouseClick(Find<QPushButton>("lblMenu"), Qt::LeftButton);
  EXPECT_FALSE(QApplication::activePopupWidget()) << "the main window takes no input";
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog)) << "nor the keyboard";
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdStopRetrying"), Qt::LeftButton);
  EXPECT_FALSE(dialog->isVisible());
  const std::size_t asked = ports_.locator.sent.size();
  ports_.data.failed({10054, "", 104});
  QTest::keyClick(dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked)) << "Escape is no retry";
  ports_.data.failed({10054, "", 104});
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdRetryNow"), Qt::LeftButton);
  EXPECT_THAT(ports_.locator.sent, SizeIs(asked + 1));
}

TEST_F(FormMainTest, TheRetryDialogTakesTheKeyboardFromTheMainWindowOnly) {
  Start();
  auto* dialog = Find<FormRetryAfterError>("FormRetryAfterError");
  QWidget other;  // where the user works
  // The window system leaves the keyboard where it is when the window says so each time that it is shown.
  const auto isShownQuietly = [&] {
    ports_.data.failed({10054, "", 104});
    const bool quietly = dialog->windowHandle()->property("_q_showWithoutActivating").toBool();
    client_->Feed().StopRetrying();
    return quietly;
  };
  EXPECT_FALSE(isShownQuietly());
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(isShownQuietly());
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  EXPECT_FALSE(isShownQuietly());
}

TEST_F(FormMainTest, TheAddressInTheRetryDialogIsALinkAndTheRestIsNoMarkUp) {
  Start();
  auto* message = Find<FormRetryAfterError>("FormRetryAfterError")->findChild<QLabel*>("lblMessage");
  ports_.probe.failed({10061, "", 111});
  EXPECT_THAT(message->text().toStdString(),
              testing::HasSubstr("<a href=\"http://127.0.0.1:2480/faq\">http://127.0.0.1:2480/faq</a>"));
  emit message->linkActivated("http://127.0.0.1:2480/faq");
  EXPECT_THAT(ports_.programs.pages, testing::ElementsAre("http://127.0.0.1:2480/faq"));
  client_->Feed().StopRetrying();
  ports_.data.failed({1, "<b>bold</b>", 1});
  EXPECT_THAT(message->text().toStdString(), testing::HasSubstr("&lt;b&gt;bold"));
}

TEST_F(FormMainTest, TheMenuButtonOpensThePopupUnderItself) {
  Start();
  auto* button = Find<QPushButton>("lblMenu");
  QTest::mouseClick(button, Qt::LeftButton);
  auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(popup);
  EXPECT_EQ(popup->pos(), button->mapToGlobal(QPoint(0, button->height())));
  popup->close();
}

TEST_F(FormMainTest, SplashAndNoticeLieOverTheMapAndGo) {
  Start();
  auto* splash = Find<QFrame>("formSplash");
  auto* notice = Find<QFrame>("formMapUpdating");
  EXPECT_TRUE(splash->isVisible() && notice->isVisible());
  window_.resize(1000, 700);
  for (QFrame* box : {splash, notice}) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(box->geometry().center().x() - 500) <= 1; }));
    EXPECT_TRUE(window_.rect().contains(box->geometry()));
  }
  ports_.Command("S3");
  EXPECT_TRUE(splash->findChildren<QCheckBox*>()[2]->isChecked());
  ports_.Command("S99");
  ports_.loop.Advance(1000);
  EXPECT_FALSE(splash->isVisible() || notice->isVisible());
}

TEST_F(FormMainTest, ASplashWhosePageNeverGetsReadyGoesByItsButtonOrEscape) {
  Start();
  auto* splash = Find<QFrame>("formSplash");
  auto* ok = splash->findChild<QPushButton*>("cmdSplashOK");
  QTest::mouseClick(ok, Qt::LeftButton);
  EXPECT_FALSE(splash->isVisible() || ok->hasFocus());
  window_.Boxes().ShowSplash();
  QTest::keyClick(&window_, Qt::Key_Escape);
  EXPECT_FALSE(splash->isVisible());
}

TEST_F(FormMainTest, ClosingTheWindowUnloadsTheClient) {
  Start();
  window_.close();
  EXPECT_TRUE(client_->IsClosing());
}

TEST_F(FormMainTest, TheHotspotEditorsOpenOverTheWindowAndApply) {
  const struct {
    const char* entry;
    const char* editor;
    const char* setting;
    const char* stored;
  } cases[] = {{"mnuOptionsHotSpotsEdit", "formHotSpots_Edit", "SSIDs", "04home"},
               {"mnuOptionsSecureHotSpotsEdit", "formSecureHotSpots_Edit", "SecureSSIDs", "04home04WPA~"}};
  ports_.settings.values["SSIDs"] = "";
  Start();
  for (const auto& row : cases) {
    client_->MenuChosen(client_->Menus().At(row.entry));
    auto* editor = Find<QWidget>(row.editor);
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor));
    client_->MenuChosen(client_->Menus().At(row.entry));
    EXPECT_EQ(window_.findChildren<QWidget*>(row.editor).size(), 1) << "an open editor is not opened twice";
    QTest::keyClicks(editor->findChild<QLineEdit*>("txtSSID(1)"), "home");
    if (auto* protocol = editor->findChild<QLineEdit*>("txtProtocol(1)")) {
      QTest::mouseClick(protocol, Qt::LeftButton);
      QTest::keyClick(protocol, Qt::Key_Space);
    }
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    EXPECT_EQ(ports_.settings.saved[row.setting], row.stored);
  }
}

}  // namespace
}  // namespace pallomir
