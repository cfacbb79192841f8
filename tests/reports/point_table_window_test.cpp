#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QTableView>
#include <QTest>

#include "reports/formDataPoints.h"

namespace pallomir {
namespace {

class PointTableWindowTest : public testing::Test {
 protected:
  PointTableWindowTest() {
    owner_.setGeometry(0, 0, 800, 600);
    owner_.show();
    owner_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
  }
  ~PointTableWindowTest() override { delete form_; }

  void Open(int rows) {
    PointTable table;
    table.emptyNote = "nothing there";
    for (int i = 0; i < rows; ++i)
      table.rows.push_back({1, static_cast<std::size_t>(i), std::to_string(i + 1), "0.5", "2", "time", "34.5",
                            1 + i % 16, 17 + i % 4});
    PointTableView::Actions actions;
    actions.hovered = [this](std::size_t row) { told_ += 'h' + std::to_string(row) + ' '; };
    actions.chosen = [this](std::size_t row) { told_ += 'c' + std::to_string(row) + ' '; };
    actions.save = [this] { told_ += "save "; };
    actions.closed = [this] { told_ += "closed "; };
    form_ = new formDataPoints(&owner_, table, std::move(actions));
    form_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(form_));
  }
  QTableView* Table() { return form_->findChild<QTableView*>("pointTable"); }
  QRect Cell(int row, int column) { return Table()->visualRect(Table()->model()->index(row, column)); }
  QColor GroundOf(int row, int column) {
    const QRect cell = Cell(row, column);
    return Table()->viewport()->grab().toImage().pixelColor(cell.topLeft() + QPoint(1, 1));
  }
  // Dark pixels in the quarters of a picture's cell: above and below its middle.
  std::pair<int, int> InkOfArrow(int row) {
    const QRect cell = Cell(row, 5);
    const QImage picture = Table()->viewport()->grab(cell).toImage();
    std::pair<int, int> ink;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixelColor(x, y).lightness() < 128) ++(y < picture.height() / 2 ? ink.first : ink.second);
    return ink;
  }

  QWidget owner_;
  QPointer<formDataPoints> form_;
  std::string told_;
};

TEST_F(PointTableWindowTest, OpensWithoutTheKeyboardAndIsWalkedOnceItHasIt) {
  Open(12);
  EXPECT_TRUE(form_->testAttribute(Qt::WA_ShowWithoutActivating)) << "the platform without a screen activates all";
  EXPECT_EQ(form_->windowTitle(), "pallomir -- datapoints");
  const int pitch = Table()->verticalHeader()->defaultSectionSize();
  EXPECT_EQ(form_->height(), Table()->horizontalHeader()->height() + 12 * pitch + 40 * pitch / 14);
  EXPECT_GE(Table()->viewport()->height(), 12 * pitch);
  form_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return, Qt::Key_Up, Qt::Key_Enter})
    QTest::keyClick(QApplication::focusWidget(), key);
  EXPECT_THAT(told_, testing::EndsWith("h1 h2 c2 h1 c1 "));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
              testing::EndsWith("\n12\t0.5\t2\ttime\t34.5\tWSW\tReceived and not received\n"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::ControlModifier);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
  form_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_THAT(told_, testing::EndsWith("save closed "));
}

TEST_F(PointTableWindowTest, TheRowUnderThePointerIsGreyInAllColumns) {
  Open(4);
  for (const QPointF at : {Cell(1, 3).center(), Cell(2, 4).center()}) {
    QMouseEvent move(QEvent::MouseMove, at, Table()->viewport()->mapToGlobal(at), Qt::NoButton, {}, {});
    QApplication::sendEvent(Table()->viewport(), &move);
  }
  EXPECT_THAT(told_, testing::EndsWith("h2 "));
  for (const int column : {0, 1, 2, 3, 4}) {
    EXPECT_EQ(GroundOf(2, column), QColor(238, 238, 238)) << column;
    EXPECT_EQ(GroundOf(1, column), QColor(255, 255, 255)) << column;
  }
  QPalette dark;
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  Table()->setPalette(dark);
  EXPECT_EQ(GroundOf(1, 0), QColor(Qt::black));
  EXPECT_EQ(GroundOf(2, 0).lightness(), 64);
  QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {}, Cell(2, 4).center());
  QTest::mouseDClick(Table()->viewport(), Qt::LeftButton, {}, Cell(2, 4).center());
  EXPECT_THAT(told_, testing::EndsWith("c2 "));
  form_->ShowAddress("Bethlehem, <b>");
  EXPECT_EQ(form_->findChild<QLabel*>("lblReverseGeoCode")->text(), "Bethlehem, <b>");
  EXPECT_EQ(Table()->model()->headerData(1, Qt::Horizontal).toString(), "Distance");
}

TEST_F(PointTableWindowTest, ArrowsPointWhereTheHeadingIs) {
  Open(9);
  const auto [northAbove, northBelow] = InkOfArrow(0);
  const auto [southAbove, southBelow] = InkOfArrow(8);
  EXPECT_GT(northAbove, northBelow) << "the head is wider than the shaft";
  EXPECT_GT(southBelow, southAbove);
}

TEST_F(PointTableWindowTest, AnEmptyOneSaysWhy) {
  Open(0);
  EXPECT_FALSE(Table()->isVisible()) << "nor do headings show";
  EXPECT_EQ(form_->findChild<QLabel*>("lblEmpty")->text(), "nothing there");
  EXPECT_TRUE(form_->findChild<QLabel*>("lblEmpty")->isVisible());
  EXPECT_EQ(form_->height(), 47 * std::max(14, form_->fontMetrics().height()) / 14);
}

}  // namespace
}  // namespace pallomir
