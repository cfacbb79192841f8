#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "fakes/fake_system.h"
#include "journal/formJournal.h"
#include "journal/sqlite_journal.h"
#include "window/formMain.h"
#include "window/journal_windows_widget.h"

namespace pallomir {
namespace {

using testing::ElementsAre;

const Millis kNoon = ToMillis({2026, 11, 23, 12});

class JournalWindowTest : public testing::Test {
 protected:
  JournalWindowTest() {
    store_.Open(":memory:");
    Note("A", 3);
    Note("B", 2);
    JournalView::Actions actions;
    actions.show = [this](const JournalEntry& entry) {
      shown_.push_back(entry.unitName + list_.Text(entry, JournalList::kTime));
    };
    actions.acknowledge = [this](std::vector<std::int64_t> ids) {
      store_.Acknowledge(ids, kNoon);
      form_->Refresh();
    };
    actions.acknowledgeAll = [this] { ++acknowledgedAll_; };
    actions.save = [this] { ++saved_; };
    actions.notify = [this](bool on) { notifies_ = on; };
    actions.moved = [this](const std::string& place) { place_ = place; };
    owner_.show();
    form_ = new formJournal(&owner_, list_, {"30,40,800,300", true}, std::move(actions));
    form_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_));
  }
  ~JournalWindowTest() override { delete form_; }

  // Entries of this unit, a minute apart, the newest of them an alert.
  void Note(const std::string& unit, int count) {
    std::vector<JournalEntry> entries;
    for (int i = 0; i < count; ++i) {
      JournalEntry& entry = entries.emplace_back();
      entry.zone = i % 2 == 0 ? "Depot" : "Yard";
      entry.hasEntered = true;
      entry.utc = kNoon + i * kMinute + (unit == "B" ? kSecond : 0);
      entry.isAlert = i == count - 1;
    }
    store_.Replace({unit, "Van " + unit, kNoon, kNoon + kDay, {}}, entries);
  }

  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = form_->findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name;
    return widget;
  }
  QTableView* Table() { return Find<QTableView>("journalTable"); }
  QString Cell(int row, int column) { return Table()->model()->index(row, column).data().toString(); }
  void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, held);
  }

  fakes::FakeClock clock_;
  LocalClock local_{clock_};
  SqliteJournal store_;
  JournalList list_{store_, local_};
  QWidget owner_;
  QPointer<formJournal> form_;
  std::vector<std::string> shown_;
  int acknowledgedAll_ = 0;
  int saved_ = 0;
  bool notifies_ = true;
  std::string place_;
};

TEST_F(JournalWindowTest, ByKeyboardAlone) {
  EXPECT_EQ(form_->geometry(), QRect(30, 40, 800, 300));
  EXPECT_EQ(Find<QLabel>("lblCount")->text(), "5 entries, 2 unseen alert(s)");
  ASSERT_EQ(QApplication::focusWidget(), Table());
  Press(Qt::Key_Return);
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_THAT(shown_, ElementsAre("Van A11/23/26 12:02:00 PM", "Van B11/23/26 12:01:01 PM"));
  Press(Qt::Key_Up, Qt::ShiftModifier);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            "Time\tUnit\tEvent\tZone\tAlert\tStay\n"
            "11/23/26 12:02:00 PM\tVan A\tEntered\tDepot\tAlert\t\n"
            "11/23/26 12:01:01 PM\tVan B\tEntered\tYard\tAlert\t\n");
  Press(Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Cell(0, JournalList::kAlert) != "Alert"; }));
  EXPECT_EQ(Cell(1, JournalList::kAlert), "Seen 11/23/26 12:00:00 PM");
  EXPECT_EQ(store_.OpenAlerts(), 0u);
  Press(Qt::Key_V, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return saved_ == 1; }));
  Press(Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !notifies_; }));
  Press(Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([this] { return form_.isNull(); }));
}

TEST_F(JournalWindowTest, FiltersAndWhatComesMeanwhile) {
  auto* unit = Find<QComboBox>("cboUnit");
  auto* zone = Find<QComboBox>("cboZone");
  EXPECT_EQ(unit->count(), 3);
  unit->setCurrentText("Van B");
  EXPECT_FALSE(Table()->selectionModel()->hasSelection()) << "the entry that was chosen is not there";
  unit->setCurrentText("Van A");
  EXPECT_EQ(Table()->model()->rowCount(), 3);
  zone->setCurrentText("Yard");
  EXPECT_EQ(Table()->model()->rowCount(), 1);
  zone->setCurrentIndex(0);
  Find<QCheckBox>("chkAlerts")->click();
  EXPECT_EQ(Table()->model()->rowCount(), 1);
  EXPECT_EQ(Cell(0, JournalList::kTime), "11/23/26 12:02:00 PM");
  Find<QCheckBox>("chkAlerts")->click();
  Table()->selectRow(1);
  Note("A", 5);
  Note("C", 1);
  form_->Refresh();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Table()->model()->rowCount() == 5; }));
  EXPECT_EQ(unit->currentText(), "Van A");
  EXPECT_EQ(unit->count(), 4);
  EXPECT_EQ(Table()->currentIndex().row(), 3) << "the entry that was chosen";
}

TEST_F(JournalWindowTest, ItsPlaceIsToldAndOneThatIsNowhereForgotten) {
  form_->move(50, 60);
  form_->close();
  EXPECT_EQ(place_, "50,60,800,300");
  formMain main(new QWidget);
  JournalWindows windows(main);
  JournalView::Actions actions;
  actions.moved = [this](const std::string& place) { place_ = place; };
  windows.ShowJournal(list_, {"30,40,800,300", true}, std::move(actions));
  main.findChild<QWidget*>("formJournal")->move(70, 80);
  windows.CloseJournal();
  EXPECT_EQ(place_, "70,80,800,300") << "also where it has just been moved";
  for (const char* place : {"", "x", "90000,0,500,300", "0,0,1,1"}) {
    formJournal other(&owner_, list_, {place, false}, {});
    EXPECT_GE(other.width(), 500) << place;
    EXPECT_GE(other.height(), 200) << place;
  }
}

}  // namespace
}  // namespace pallomir
