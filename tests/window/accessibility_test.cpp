#include <QAccessible>
#include <QToolTip>

#include "window/window_harness.h"

// What assistive programs and the keyboard alone find in the main window.

namespace pallomir {
namespace {

class AccessibilityTest : public WindowHarness {
 protected:
  QAccessibleInterface* Told(const char* name) {
    return QAccessible::queryAccessibleInterface(Find<QWidget>(name));
  }

  /// What Tab reaches, one after the other, from the menu button on.
  std::vector<std::string> TabStops() {
    std::vector<std::string> names;
    auto* first = Find<QWidget>("lblMenu");
    QWidget* widget = first;
    do {
      if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) &&
          !widget->focusProxy() && widget->window() == &window_)
        names.push_back(widget->objectName().toStdString());
      widget = widget->nextInFocusChain();
    } while (widget != first);
    return names;
  }

  void ShowTimeline() {
    ports_.loop.Advance(6000);  // the end of a window of one day hides too
    ASSERT_TRUE(Find<QWidget>("picData(1)")->isVisible());
  }
};

TEST_F(AccessibilityTest, TabGoesAsTheEyeReads) {
  Start();
  ShowTimeline();
  const auto stops = [this](int count) {
    QStringList names;
    for (const std::string& name : TabStops()) names += QString::fromStdString(name);
    return names.mid(0, count).join(' ').toStdString();
  };
  EXPECT_EQ(
      stops(-1),
      "lblMenu DTP(0) picLamp pctHelp_1 pctHelp_2 pctButton_Minimize pctButton_Normal pctButton_Maximize "
      "pctButton_FullScreen pctButton_Exit cmdSplashOK FocusGetter imgReload picData(1)");
  Find<QWidget>("DTP(0)")->setFocus();
  client_->Pickers().Changed(0, ToMillis({2026, 11, 20}));
  ports_.loop.Advance(0);
  EXPECT_EQ(stops(5), "lblMenu DTP(0) DTP(1) cmdOK_Reload picLamp");
}

TEST_F(AccessibilityTest, WhatHasNoTextTellsItsTipToTheKeyboardToo) {
  Start();
  ShowTimeline();
  QTest::keyClick(Find<QWidget>("FocusGetter"), Qt::Key_Tab);  // from now on the focus stays where it is
  window_.ShowLamp({LampColour::kAmber, "new data", ""});
  for (const char* name : {"picLamp", "pctButton_Minimize", "imgReload"}) {
    QToolTip::hideText();
    auto* widget = Find<QWidget>(name);
    widget->setFocus(Qt::MouseFocusReason);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QToolTip::isVisible()) << name << ": whoever has a pointer sees it by pointing";
    widget->clearFocus();
    widget->setFocus(Qt::TabFocusReason);
    QTest::qWait(50);  // it is not to go at once
    EXPECT_TRUE(QToolTip::isVisible()) << name;
    EXPECT_EQ(QToolTip::text(), widget->toolTip());
  }
}

TEST_F(AccessibilityTest, TheWindowAndItsControlsSayWhatTheyAre) {
  Start();
  const std::tuple<const char*, QAccessible::Role, const char*, bool> cases[] = {
      {"lblMenu", QAccessible::ButtonMenu, "Menu", true},
      {"FocusGetter", QAccessible::ButtonMenu, "Map keyboard", true},
      {"pctHelp_1", QAccessible::Button, "Show the keys on a keyboard", false},
  };
  for (const auto& [name, role, called, hasPopup] : cases) {
    QAccessibleInterface* told = Told(name);
    EXPECT_EQ(told->role(), role) << name;
    EXPECT_EQ(told->text(QAccessible::Name).toStdString(), called);
    EXPECT_EQ(told->state().hasPopup, hasPopup) << name;
    EXPECT_TRUE(told->state().focusable) << name;
  }
  QAccessibleInterface* lamp = Told("picLamp");
  EXPECT_EQ(lamp->role(), QAccessible::StaticText);
  window_.ShowLamp({LampColour::kRed, "connection lost", "press R"});
  EXPECT_EQ(lamp->text(QAccessible::Name), "State: connection lost");
  EXPECT_EQ(Find<QWidget>("picLamp")->toolTip(), "connection lost");
  QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&window_);
  EXPECT_EQ(window->role(), QAccessible::Window);
  EXPECT_EQ(window->text(QAccessible::Name), "Pallomir");
}

TEST_F(AccessibilityTest, TheMapsKeyboardAndTheMenuButtonOpenTheMenu) {
  Start();
  auto* holder = Find<QCheckBox>("FocusGetter");
  const std::function<void()> ways[] = {
      [&] { QTest::keyClick(holder, Qt::Key_Space); },
      [&] { Told("FocusGetter")->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction()); },
      [&] { Told("lblMenu")->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction()); },
  };
  for (const auto& open : ways) {
    open();
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(popup);
    popup->close();
  }
}

TEST_F(AccessibilityTest, TheKeysOfThePictureAreReadByKeyboard) {
  Start();
  auto* button = Find<QWidget>("pctHelp_1");
  QTest::keyClick(&window_, Qt::Key_Tab);
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Space);
  const auto at = [this] {
    const auto* label = qobject_cast<QLabel*>(window_.focusWidget());
    return label ? label->text().toStdString() : "none";
  };
  ASSERT_EQ(at(), "`");
  const std::pair<Qt::Key, const char*> walk[] = {
      {Qt::Key_Left, "`"},      {Qt::Key_Up, "`"},        {Qt::Key_Right, "1"},  {Qt::Key_Down, "Q"},
      {Qt::Key_Down, "A"},      {Qt::Key_Down, "Z"},      {Qt::Key_Down, "alt"}, {Qt::Key_Down, "alt"},
      {Qt::Key_Right, "space"}, {Qt::Key_Right, "space"}, {Qt::Key_Up, "B"},     {Qt::Key_Up, "G"},
      {Qt::Key_Right, "H"},
  };
  for (const auto& [key, caption] : walk) {
    QTest::keyClick(window_.focusWidget(), key);
    EXPECT_EQ(at(), caption);
  }
  QAccessibleInterface* key = QAccessible::queryAccessibleInterface(window_.focusWidget());
  EXPECT_EQ(key->text(QAccessible::Name), "H");
  EXPECT_EQ(key->text(QAccessible::Description).toStdString(), "Display \"hybrid view\" of map");
  ports_.loop.Advance(1000);
  EXPECT_EQ(at(), "H") << "the focus holder leaves the reader alone";
  QTest::keyClick(window_.focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Find<QWidget>("pctKeyboard")->isVisible());
  EXPECT_EQ(window_.focusWidget(), Find<QCheckBox>("FocusGetter"));
}

TEST_F(AccessibilityTest, ASelectionOnTheTimelineIsLoadedAsADragIs) {
  Start();
  ShowTimeline();
  const TimeWindow before = client_->Window();
  QTest::keyClick(&window_, Qt::Key_Tab);
  auto* row = Find<QWidget>("picData(1)");
  row->setFocus(Qt::TabFocusReason);
  QTest::keyClick(row, Qt::Key_Right, Qt::ControlModifier);
  QTest::keyClick(row, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClick(row, Qt::Key_Return);
  EXPECT_EQ(client_->Window(), (TimeWindow{before.start + 3 * kHour, before.start + 6 * kHour}));
  ports_.loop.Advance(1000);
  EXPECT_TRUE(row->hasFocus()) << "for the next step";
  QTest::keyClick(row, Qt::Key_X);
  EXPECT_EQ(client_->Window(), before) << "hot keys work from the timeline too";
}

}  // namespace
}  // namespace pallomir
