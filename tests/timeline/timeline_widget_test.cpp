#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "timeline/strip_parts_widget.h"
#include "timeline/timeline_info_widget.h"
#include "timeline/timeline_strip_widget.h"

// The strip as it is seen and dragged. The tests run at several screen scales (QT_SCALE_FACTOR).

namespace pallomir {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr int kWidth = 1000;

class TimelineStripTest : public testing::Test {
 protected:
  TimelineStripTest() {
    window_.resize(kWidth + 20, 700);
    strip_ = new TimelineStrip(&window_);
    strip_->dragFinished = [this](double from, double to) { drags_.emplace_back(from, to); };
    strip_->hovered = [this](int row, int column) { hovers_.emplace_back(row, column); };
    strip_->left = [this] { ++leaves_; };
  }

  void Show(int rows) {
    strip_->resize(kWidth + 20, 100);
    strip_->LayOutRows(rows);
    strip_->resize(kWidth + 20, strip_->HeightIn(window_.height()));
    std::vector<TimelineUnit> units;
    for (int k = 1; k <= rows; ++k) units.push_back({"Van <A>", 0x800000, points_});
    picture_ = DrawTimeline({start_, start_ + kDay}, 0, strip_->ScaleWidth(), units);
    strip_->Redraw(picture_);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
  }

  QWidget* Find(const char* name) { return strip_->findChild<QWidget*>(name); }

  // The strip is told directly: where the tests' pointer rests is the platform's affair.
  void Mouse(QEvent::Type type, const char* on, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, at, Find(on)->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(Find(on), &event);
  }
  void Press(double x) {
    Mouse(QEvent::MouseButtonPress, "picData(1)", {x, 3}, Qt::LeftButton, Qt::LeftButton);
  }
  void MoveTo(double x) { Mouse(QEvent::MouseMove, "picData(1)", {x, 3}, Qt::NoButton, Qt::LeftButton); }
  void Release(double x) {
    Mouse(QEvent::MouseButtonRelease, "picData(1)", {x, 3}, Qt::LeftButton, Qt::NoButton);
  }

  const Millis start_ = ToMillis({2026, 11, 16});
  const std::vector<DataPoint> points_ = [this] {
    std::vector<DataPoint> points;
    for (const Millis minutes : {-5, 0, 300, 301, 302, 303, 777, 1439, 1500}) {
      DataPoint point;
      point.time = *EncodePackedTime(start_ + minutes * kMinute);
      points.push_back(point);
    }
    return points;
  }();
  QWidget window_;
  TimelineStrip* strip_;
  TimelinePicture picture_;
  std::vector<std::pair<double, double>> drags_;
  std::vector<std::pair<int, int>> hovers_;
  int leaves_ = 0;
};

TEST_F(TimelineStripTest, EachColumnFillsItsPixelsOfTheScreen) {
  Show(2);
  const double s = strip_->devicePixelRatioF();
  const QImage time = Find("picTime(2)")->grab().toImage().convertToFormat(QImage::Format_RGB32);
  const QImage data = Find("picData(2)")->grab().toImage().convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(data.width(), qRound(kWidth * s));
  std::vector<int> tickHeights(kWidth + 1, 0);  // that at the very end is not seen
  for (const Tick& tick : picture_.scale->ticks)
    tickHeights[static_cast<std::size_t>(tick.column)] = tick.height;
  for (int column = 0; column < kWidth; ++column) {
    const int ticks = tickHeights[static_cast<std::size_t>(column)];
    const QRgb ground = PointUnder(picture_, 2, column) == kNoPoint ? qRgb(255, 192, 192) : qRgb(255, 0, 0);
    for (int x = qRound(column * s); x < qRound((column + 1) * s); ++x) {
      for (int line = 0; line < 8; ++line) {
        const int y = qRound(line * s);
        const QRgb below = line == 0 ? qRgb(255, 255, 255) : ground;
        ASSERT_EQ(data.pixel(x, y), line < ticks ? qRgb(0, 0, 0) : below) << column << " " << line;
        ASSERT_EQ(time.pixel(x, y), line < ticks ? qRgb(0, 0, 0) : qRgb(255, 255, 255)) << column;
      }
    }
  }
}

TEST_F(TimelineStripTest, LabelsStandAtTheirTicksAndNotOverOneAnother) {
  Show(1);
  for (const auto& mark : strip_->ScaleMarks()) {
    EXPECT_TRUE(mark.shown) << mark.column;
    EXPECT_GE(mark.place.left(), 0);
    EXPECT_LT(mark.place.right(), Find("imgReload")->x());
    const bool isAtAnEnd = mark.column == 0 || mark.column == kWidth;
    EXPECT_NEAR(mark.place.center().x(), mark.column + 10, isAtAnEnd ? 30 : 1);
  }
  EXPECT_EQ(strip_->ScaleMarks().size(), 9u);
  // 28 February and 1 March are 8 pixels apart: the month is the one that shows.
  const TimeWindow spring{ToMillis({2026, 2, 14}), ToMillis({2026, 6, 4})};
  strip_->Redraw(DrawTimeline(spring, 0, kWidth, std::vector<TimelineUnit>(1)));
  QRegion taken;
  for (const auto& mark : strip_->ScaleMarks()) {
    if (!mark.shown) continue;
    EXPECT_FALSE(taken.intersects(mark.place)) << mark.text.toStdString();
    taken += mark.place;
  }
}

TEST_F(TimelineStripTest, ADragZoomsAndShowsItsBand) {
  Show(2);
  QWidget* band = Find("shpZoomInterval");
  Press(249);
  MoveTo(252);
  EXPECT_FALSE(band->isVisible());
  MoveTo(499);
  EXPECT_TRUE(band->isVisible());
  EXPECT_EQ(band->geometry(), QRect(260, 0, 251, 42));
  Release(499);
  EXPECT_FALSE(band->isVisible());
  EXPECT_THAT(drags_, ElementsAre(Pair(DoubleNear(0.25, 1e-9), DoubleNear(0.5, 1e-9))));
}

TEST_F(TimelineStripTest, EscapeAnotherWindowAndANewWidthEndADrag) {
  Show(1);
  QWidget keyboardHolder(&window_);
  const std::function<void()> ends[] = {
      [&] { QTest::keyClick(&keyboardHolder, Qt::Key_Escape); },
      [&] {
        QEvent away(QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(strip_, &away);
      },
      [&] { strip_->resize(kWidth, strip_->height()); },
      [&] { strip_->hide(); },
  };
  for (const auto& end : ends) {
    Press(100);
    MoveTo(300);
    end();
    EXPECT_FALSE(Find("shpZoomInterval")->isVisible());
    Release(300);
  }
  EXPECT_THAT(drags_, IsEmpty());
}

TEST_F(TimelineStripTest, HoverNamesRowAndColumnOnceAndLeavesBesideTheRows) {
  Show(3);
  const auto hover = [this](const char* on, double x) {
    Mouse(QEvent::MouseMove, on, {x, 2}, Qt::NoButton, Qt::NoButton);
  };
  hover("picData(1)", 0);
  hover("picData(3)", 999);
  leaves_ = 0;
  hover("ScaleMark", 400);
  EXPECT_EQ(leaves_, 1);
  hover("picData(3)", 999);
  EXPECT_THAT(hovers_, ElementsAre(Pair(1, 0), Pair(3, 999), Pair(3, 999)));
}

TEST_F(TimelineStripTest, TheKeyboardWalksRowsAndTicksSelectsAndLoads) {
  Show(3);
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  const auto press = [this](Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(window_.focusWidget(), key, held);
  };
  leaves_ = 0;
  Find("picData(1)")->setFocus(Qt::TabFocusReason);
  press(Qt::Key_Right, Qt::ControlModifier);
  press(Qt::Key_Down);
  EXPECT_TRUE(Find("picData(2)")->focusPolicy() & Qt::TabFocus) << "Tab comes back to the row that was left";
  EXPECT_FALSE(Find("picData(1)")->focusPolicy() & Qt::TabFocus);
  EXPECT_THAT(hovers_, ElementsAre(Pair(1, 0), Pair(1, 125), Pair(2, 125)));
  EXPECT_EQ(strip_->PointerPosition(), QPoint(10 + 125, 20 + 21));
  EXPECT_EQ(Find("lineCursor")->geometry(), QRect(10 + 125 - 1, 0, 3, Find("lineCursor")->height()));
  press(Qt::Key_Return);
  EXPECT_THAT(drags_, IsEmpty()) << "nothing is selected";
  press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Find("shpSelection")->geometry().left(), 10 + 125);
  EXPECT_EQ(Find("shpSelection")->geometry().right(), 10 + 250);
  press(Qt::Key_Return);
  press(Qt::Key_Return);
  EXPECT_THAT(drags_, ElementsAre(Pair(DoubleNear(0.125, 1e-9), DoubleNear(0.25, 1e-9)))) << "once";
  EXPECT_EQ(leaves_, 1) << "what the hover box says is of the window before";
  press(Qt::Key_Right, Qt::ShiftModifier);
  press(Qt::Key_Escape);
  EXPECT_FALSE(Find("shpSelection")->isVisible());
  window_.setFocus();
  EXPECT_EQ(leaves_, 2);
  EXPECT_FALSE(Find("lineCursor")->isVisible());
}

TEST_F(TimelineStripTest, RowsAreNamedAndTheCursorIsToldAsTheirDescription) {
  Show(2);
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  strip_->hovered = [this](int, int) { strip_->TellHover("Unit #1 Van\n5.0 mph\n1.00 mi"); };
  for (const auto& [name, called] :
       {std::pair("picData(1)", "Van <A>, 11/16/26 12:00:00 AM to 11/17/26 12:00:00 AM, 7 points"),
        {"picTime(2)", "Time scale of Van <A>"},
        {"Pointer(2)", "Colour of Van <A>: maroon"},
        {"ScaleMark", "Time scale"}}) {
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(Find(name));
    EXPECT_EQ(told->text(QAccessible::Name).toStdString(), called);
  }
  QAccessibleInterface* second = QAccessible::queryAccessibleInterface(Find("picData(2)"));
  second->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
  EXPECT_TRUE(Find("picData(2)")->hasFocus());
  const auto described = [&] { return second->text(QAccessible::Description).toStdString(); };
  strip_->TellHover("Unit #1 Van\nof the pointer");
  QTest::keyClick(Find("picData(2)"), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(described(),
            "Selected 11/16/26 12:00:00 AM to 11/16/26 12:15:00 AM, point 5.0 mph, 1.00 mi, Enter loads the "
            "selection");
}

TEST_F(TimelineStripTest, ManyRowsScrollInAThirdOfTheWindow) {
  Show(40);
  EXPECT_EQ(strip_->height(), 233);
  auto* bar = strip_->findChild<QScrollBar*>();
  ASSERT_TRUE(bar->isVisible());
  QWheelEvent wheel({50, 100}, strip_->mapToGlobal(QPointF(50, 100)), {}, {0, -120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(strip_, &wheel);
  EXPECT_GT(bar->value(), 0);
  bar->setValue(bar->maximum());
  Mouse(QEvent::MouseMove, "picData(40)", {5, 3}, Qt::NoButton, Qt::NoButton);
  EXPECT_THAT(hovers_, ElementsAre(Pair(40, 5)));
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  Find("picData(1)")->setFocus();
  EXPECT_EQ(bar->value(), 0) << "the keyboard's row is in view";
  for (int row = 2; row <= 12; ++row) QTest::keyClick(window_.focusWidget(), Qt::Key_Down);
  EXPECT_EQ(bar->value(), 12 * 21 - 3 - 213);
  Show(1);
  EXPECT_FALSE(bar->isVisible() || Find("picData(2)"));
}

TEST_F(TimelineStripTest, LayOutClearsAndImgReloadAsksForIt) {
  Show(1);
  int clicks = 0;
  strip_->layoutClicked = [&clicks] { ++clicks; };
  auto* reload = strip_->findChild<QAbstractButton*>("imgReload");
  QTest::mouseClick(reload, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  strip_->LayOutRows(1);
  EXPECT_THAT(strip_->ScaleMarks(), IsEmpty());
  EXPECT_NE(Find("picData(1)")->grab().toImage().pixelColor(300, 3), QColor(255, 192, 192));
  picture_.width = kWidth - 1;
  strip_->Redraw(picture_);
  EXPECT_THAT(strip_->ScaleMarks(), IsEmpty()) << "drawn for a width of before";
}

TEST(TimelineInfo, TheBoxStaysOverTheMapAndGoesWhenThePointerComes) {
  QWidget window;
  window.resize(800, 600);
  TimelineInfo box(&window);
  const QRect map(0, 0, 800, 500);
  window.show();
  for (const QString& text : {QString("Unit #1 Van"), QString(400, 'W'), QString("<b>a</b>\nb\nc\nd")}) {
    box.ShowText(text, {790, 520}, map);
    EXPECT_TRUE(map.contains(box.geometry())) << text.toStdString();
    auto* label = box.findChild<QLabel*>("lblTimelineInfo");
    EXPECT_EQ(label->text(), text);
    EXPECT_TRUE(box.rect().contains(label->geometry()));
  }
  QTest::mouseMove(&box, QPoint(3, 3));
  QEnterEvent enter({3, 3}, {3, 3}, {3, 3});
  QCoreApplication::sendEvent(&box, &enter);
  EXPECT_FALSE(box.isVisible());
}

}  // namespace
}  // namespace pallomir
