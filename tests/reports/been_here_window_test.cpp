#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/fake_web_query.h"
#include "reports/formBeenHere.h"
#include "reports/reports_testing.h"

namespace pallomir {
namespace {

class BeenHereWindowTest : public testing::Test {
 protected:
  BeenHereWindowTest() {
    clock_.now = kNoon + kDay;
    folder_.Write("00000000000A", "1",
                  FileOf({RecordAt(0), RecordAt(60), RecordAt(120, 600000), RecordAt(180)}));
    VisitTarget target;
    target.name = "0.000000, 0.000000";
    target.area = []() -> std::function<SearchArea()> {
      return [] { return SearchArea::Around(0, 0, 0.1); };
    };
    search_.Open(target, {{"00000000000A", "00000000000A - Van", 0xFF0000}}, {kNoon, kNoon + kDay});
    owner_.show();
    form_ = new formBeenHere(&owner_, search_, {[this] { ++saved_; }, [this] { ++closed_; }});
    form_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_));
  }
  ~BeenHereWindowTest() override { delete form_; }

  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = form_->findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name;
    return widget;
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, held);
  }

  fakes::FakeEventLoop loop_;
  fakes::FakeClock clock_;
  LocalClock local_{clock_};
  DataFolder folder_;
  fakes::FakeWebQuery web_;
  int saved_ = 0;
  int closed_ = 0;
  std::vector<std::string> loaded_;
  QPointer<formBeenHere> form_;
  BeenHere search_{loop_,
                   local_,
                   folder_.Path(),
                   {web_, "127.0.0.1:2480"},
                   {.changed =
                        [this] {
                          if (form_) form_->Refresh();
                        },
                    .failed = [](const std::string&) {},
                    .load = [this](const std::string& unit, const TimeWindow&) { loaded_.push_back(unit); }}};
  QWidget owner_;
};

TEST_F(BeenHereWindowTest, ByKeyboardAlone) {
  EXPECT_EQ(QApplication::focusWidget(), Find<QComboBox>("MobileUnit"));
  EXPECT_EQ(Find<QComboBox>("MobileUnit")->itemText(0), "All Mobile Units");
  EXPECT_TRUE(Find<QCheckBox>("cbInterval(0)")->isChecked() && Find<QCheckBox>("cbInterval(1)")->isChecked());
  loop_.holdsWork = true;
  Press(Qt::Key_Return);
  auto* search = Find<QPushButton>("cmdSearch");
  EXPECT_EQ(search->text(), "  Searching...     0");
  EXPECT_TRUE(Find<QWidget>("searchProgress")->isVisible());
  Press(Qt::Key_Escape);
  loop_.LetWorkEnd();
  EXPECT_TRUE(Find<QLabel>("lblStatus")->text().startsWith("Search cancelled"));
  search->setFocus();
  Press(Qt::Key_Space);
  loop_.LetWorkEnd();
  auto* list = Find<QListWidget>("txtT");
  EXPECT_EQ(search->text(), "Search Now");
  ASSERT_EQ(list->count(), 2);
  EXPECT_EQ(list->item(1)->text(), " Unit-1:      11/22/26 12:00:00 PM -- 11/22/26 12:01:00 PM");
  ASSERT_EQ(QApplication::focusWidget(), list) << "the visits come under the keyboard";
  Press(Qt::Key_Down);
  EXPECT_EQ(Find<QLabel>("lblDetails")->text(), "Visit 2 of 2: 00000000000A - Van, 1 min, 2 records");
  Press(Qt::Key_Return);
  EXPECT_EQ(loaded_.size(), 1u);
  auto* calendar = Find<QListWidget>("visitCalendar");
  ASSERT_EQ(calendar->count(), 1);
  EXPECT_EQ(calendar->item(0)->text(),
            "Sun 11/22/26: 00000000000A - Van 12:03 PM; 00000000000A - Van 12:00 PM to 12:01 PM");
  EXPECT_EQ(calendar->currentRow(), 0);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(" Unit-1:      11/22/26 12:03:00 PM\r\n"));
  Press(Qt::Key_V, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return saved_ == 1; }));
  search_.SetAddress("Main Street 1");
  EXPECT_EQ(form_->windowTitle(), "Been to Main Street 1?");
  Press(Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([this] { return form_.isNull(); }));
  EXPECT_EQ(closed_, 1);
}

TEST_F(BeenHereWindowTest, TheMostRecentEventNeedsASmallWindow) {
  const int large = form_->height();
  EXPECT_GE(large, 400);
  auto* mostRecent = Find<QRadioButton>("WhichEvents(1)");
  mostRecent->click();
  EXPECT_FALSE(Find<QCheckBox>("cbInterval(0)")->isVisible());
  EXPECT_LT(form_->height(), large);
  Find<QPushButton>("cmdSearch")->click();
  loop_.RunPosted();
  EXPECT_EQ(Find<QListWidget>("txtT")->count(), 1);
  Find<QRadioButton>("WhichEvents(0)")->click();
  EXPECT_GE(form_->height(), 400);
  Find<QCheckBox>("cbInterval(1)")->click();
  EXPECT_TRUE(Find<QWidget>("DT(0)")->isEnabled());
  EXPECT_FALSE(Find<QWidget>("DT(1)")->isEnabled());
  EXPECT_FALSE(search_.choices.fromBeginning);
  loop_.holdsWork = true;
  search_.Search();
  form_->close();
  EXPECT_EQ(closed_, 1) << "though a search runs";
}

}  // namespace
}  // namespace pallomir
