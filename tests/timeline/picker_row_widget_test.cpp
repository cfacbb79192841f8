#include "timeline/picker_row_widget.h"

#include <gmock/gmock.h>

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QWindow>

#include "timeline/date_pickers.h"

// The pickers under the hand. The mouse comes by the window system, which knows the buttons that are held.

namespace pallomir {
namespace {

constexpr int kOrdinaryClick = 100;  // milliseconds from press to release

class PickerRowTest : public testing::Test {
 protected:
  PickerRowTest() {
    auto* layout = new QHBoxLayout(&window_);
    for (QWidget* control : row_.Controls()) {
      layout->addWidget(control);
      control->setMinimumWidth(48);
    }
    layout->addStretch(1);
    row_.gotFocus = [this](int i) {
      Show(i, kEditingFormat);
      Show(1, i == 1 ? kEditingFormat : "ddd,MMMd");
    };
    row_.lostFocus = [this](int i) { Show(i, "ddd,MMMd"); };
    row_.reload = [this] { ++reloads_; };
    Show(0, "ddd,MMMd");
    row_.ShowPicker(1, kStart + kDay, "ddd,MMMd", false);
    window_.resize(700, 60);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  void Show(int i, const char* format) { row_.ShowPicker(i, kStart + i * kDay, format, true); }
  QDateTimeEdit* Picker(int i) {
    return static_cast<QDateTimeEdit*>(row_.Controls().at(static_cast<std::size_t>(i)));
  }
  QPushButton* Reload() { return static_cast<QPushButton*>(row_.Controls()[2]); }

  QPoint ArrowOf(int i) {
    QStyleOptionComboBox option;
    option.initFrom(Picker(i));
    const QRect arrow =
        Picker(i)->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, Picker(i));
    return Picker(i)->mapTo(&window_, arrow.center());
  }
  void Press(const QPoint& at) {
    QTest::mousePress(window_.windowHandle(), Qt::LeftButton, {}, at);
    QTest::qWait(kOrdinaryClick);
  }
  void Release(const QPoint& at) { QTest::mouseRelease(window_.windowHandle(), Qt::LeftButton, {}, at); }

  const Millis kStart = ToMillis({2026, 11, 16});
  QWidget window_;
  PickerRow row_{&window_};
  int reloads_ = 0;
};

TEST_F(PickerRowTest, FormatsAreAsShortAsTheValueAllowsAndTheTipTellsAll) {
  const std::tuple<CivilTime, const char*, const char*> cases[] = {
      {{2026, 11, 16}, "Mon,Nov16", "Monday, November 16, 2026, 12:00:00 AM"},
      {{2026, 11, 16, 15, 30}, "Mon,Nov16, 3:30 PM", "Monday, November 16, 2026, 3:30:00 PM"},
      {{2026, 11, 16, 15, 30, 10}, "Mon,Nov16, 3:30:10 PM", "Monday, November 16, 2026, 3:30:10 PM"},
      {{1784, 11, 6, 12}, "Sat,Nov6, 12 PM", "Saturday, November 6, 1784, 12:00:00 PM"},
      {{9999, 12, 31, 23, 59, 59}, "Fri,Dec31, 11:59:59 PM", "Friday, December 31, 9999, 11:59:59 PM"},
  };
  const int width = Picker(0)->sizeHint().width();
  for (const auto& [time, text, tip] : cases) {
    const Millis value = ToMillis(time);
    row_.ShowPicker(0, value, QString::fromStdString(PickerFormat(value)), true);
    EXPECT_EQ(Picker(0)->text().toStdString(), text);
    EXPECT_EQ(Picker(0)->toolTip().toStdString(), tip);
    EXPECT_EQ(Picker(0)->sizeHint().width(), width) << "its arrow stays";
  }
  row_.ShowPicker(0, ToMillis({2026, 3, 5, 4, 7, 9}), kEditingFormat, true);
  EXPECT_EQ(Picker(0)->text().toStdString(), "Thu 03-05-26 04:07:09 AM");
}

TEST_F(PickerRowTest, TheFirstClickOnAnArrowOpensTheCalendarAndNothingMovesUnderIt) {
  // In a narrow window the second picker would take room from the first.
  for (const int width : {700, 250}) {
    window_.resize(width, 60);
    row_.ShowPicker(1, kStart + kDay, "ddd,MMMd", false);
    window_.setFocus();
    QCoreApplication::processEvents();
    ASSERT_EQ(window_.width(), width);
    const QRect before = Picker(0)->geometry();
    const QPoint arrow = ArrowOf(0);
    Press(arrow);
    EXPECT_EQ(Picker(0)->geometry(), before);
    EXPECT_TRUE(Picker(0)->calendarWidget()->isVisible());
    Release(arrow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Picker(1)->isVisible(); }));
    EXPECT_TRUE(Picker(0)->calendarWidget()->isVisible());
    EXPECT_EQ(Picker(0)->displayFormat(), "ddd MM-dd-yy hh:mm:ss AP");
    QTest::keyClick(Picker(0)->calendarWidget(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Picker(0)->calendarWidget()->isVisible(); }));
  }
}

TEST_F(PickerRowTest, ReloadStaysUnderAPressWhateverIsShownMeanwhile) {
  Show(1, "ddd,MMMd");
  row_.ShowReload(true);
  Picker(0)->setFocus();
  const QRect before = Reload()->geometry();
  Press(before.center());
  row_.ShowPicker(1, kStart + kDay, "ddd,MMMd", false);  // its time is over
  QTest::qWait(kOrdinaryClick);
  EXPECT_EQ(Reload()->geometry(), before);
  EXPECT_TRUE(Reload()->isDown() && Picker(0)->hasFocus());
  Release(before.center());
  EXPECT_EQ(reloads_, 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Picker(1)->isVisible(); })) << "made up for";
}

TEST_F(PickerRowTest, TabLeavesOutTheWeekday) {
  Show(0, kEditingFormat);
  Show(1, kEditingFormat);
  Reload()->show();
  QStringList stops;
  const auto note = [&] {
    const auto* picker = qobject_cast<QDateTimeEdit*>(window_.focusWidget());
    stops += picker ? picker->findChild<QLineEdit*>()->selectedText() : "elsewhere";
  };
  Reload()->setFocus();
  Picker(0)->setFocus(Qt::TabFocusReason);
  for (int i = 0; i < 14; ++i, QTest::keyClick(window_.focusWidget(), Qt::Key_Tab)) note();
  EXPECT_EQ(stops.join(" ").toStdString(), "11 16 26 12 00 00 AM 11 17 26 12 00 00 AM");
  stops.clear();
  for (int i = 0; i < 9; ++i, QTest::keyClick(window_.focusWidget(), Qt::Key_Backtab)) note();
  EXPECT_EQ(stops.join(" ").toStdString(), "11 AM 00 00 12 26 17 11 AM");
}

TEST_F(PickerRowTest, EnterPressesReloadWhereThereIsOneAndTakesOverWhatWasTyped) {
  std::vector<std::string> told;
  row_.changed = [&](int i, Millis value) {
    told.push_back(std::to_string(i) + " " + IsoText(value));
    row_.ShowReload(true);
  };
  row_.reload = [&] { told.emplace_back("reload"); };
  QTest::keyClick(Picker(1), Qt::Key_Return);
  EXPECT_TRUE(told.empty()) << "nothing was changed";
  ASSERT_TRUE(row_.FocusStart());
  QTest::keyClick(Picker(0), Qt::Key_Up);
  QTest::keyClick(Picker(0), Qt::Key_Enter);
  EXPECT_THAT(told, testing::ElementsAre("0 2026-11-17 00:00:00", "reload"));
}

}  // namespace
}  // namespace pallomir
