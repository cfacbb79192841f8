#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "fakes/temporary_folder.h"
#include "zones/zone_testing.h"
#include "zones/zone_windows_widget.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ZoneWindowsTest : public testing::Test {
 protected:
  ZoneWindowsTest() {
    owner_.resize(800, 600);
    owner_.show();
  }
  ~ZoneWindowsTest() override { windows_.Close(); }

  /// The open window or control of this name.
  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = owner_.findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name;
    return widget;
  }
  void Execute(ZonesView::OptionsMode mode, const ZoneOptionsModel& model) {
    windows_.Execute(mode, model, [this](const std::string& button, const ZoneOptions& options) {
      answers_.push_back(button);
      options_ = options;
    });
    ASSERT_TRUE(QTest::qWaitForWindowActive(Find<QDialog>("formZoneOptions")));
  }
  bool IsAnswered() {
    return QTest::qWaitFor([this] { return !answers_.empty(); });
  }
  static void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  static void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, held);
  }

  QWidget owner_;
  ZoneWindows windows_{&owner_};
  std::vector<std::string> answers_;
  ZoneOptions options_;
};

TEST_F(ZoneWindowsTest, ANewZonesOptionsByKeyboard) {
  Execute(ZonesView::OptionsMode::kAdd, ZoneOptionsModel());
  auto* shape = Find<QPushButton>("cmdCmd1");
  EXPECT_EQ(shape->text(), "&Add Shape");
  EXPECT_FALSE(shape->isEnabled()) << "the placeholder is no name";
  EXPECT_FALSE(Find<QComboBox>("cMin1")->isEnabled());
  Type("R&D \"x\", <b>");
  EXPECT_TRUE(shape->isEnabled());
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Sunday");
  Press(Qt::Key_Space);
  QTest::keyClick(Find<QDialog>("formZoneOptions"), Qt::Key_O, Qt::AltModifier);
  ASSERT_EQ(QApplication::focusWidget(), Find<QComboBox>("cHr1"));
  for (int i = 0; i < 8; ++i) Press(Qt::Key_Down);
  EXPECT_EQ(Find<QComboBox>("cHr1")->currentText(), " 7 AM");
  auto* end = Find<QComboBox>("cHr2");
  EXPECT_TRUE(end->isEnabled());
  EXPECT_EQ(end->itemText(23), " 6 AM Next Day");
  Press(Qt::Key_Return);
  ASSERT_TRUE(IsAnswered());
  EXPECT_THAT(answers_, ElementsAre("Edit Shape"));
  EXPECT_EQ(options_, (ZoneOptions{"", "R&D 'x', <b>", "-MTWTFS", "0800", "0100"}));
}

TEST_F(ZoneWindowsTest, AnOldZonesOptionsShowAndEveryEndAnswersOnce) {
  const ZoneOptions options{"s", "Depot", "-MTWTF-", "0815", "1730"};
  const std::pair<const char*, std::function<void()>> ends[] = {
      {"Edit Shape", [&] { Find<QPushButton>("cmdCmd1")->click(); }},
      {"Cancel", [&] { Find<QPushButton>("cmdCmd0")->click(); }},
      {"", [&] { Press(Qt::Key_Escape); }},
      {"", [&] { Find<QDialog>("formZoneOptions")->close(); }}};
  for (const auto& [answer, act] : ends) {
    Execute(ZonesView::OptionsMode::kMod, ZoneOptionsModel(options));
    EXPECT_EQ(Find<QPushButton>("cmdCmd1")->text(), "Edit &Shape");
    EXPECT_EQ(Find<QLineEdit>("txtDescription")->selectedText(), "Depot");
    EXPECT_FALSE(Find<QCheckBox>("cbDayOfWeek0")->isChecked());
    QString times;
    for (const char* list : {"cHr1", "cMin1", "cHr2", "cMin2"}) times += Find<QComboBox>(list)->currentText();
    EXPECT_EQ(times, " 7 AM:1512 AM Next Day:30");
    act();
    ASSERT_TRUE(IsAnswered());
    EXPECT_THAT(answers_, ElementsAre(answer));
    EXPECT_EQ(options_, options);
    QTest::qWait(0);
    EXPECT_FALSE(owner_.findChild<QDialog*>("formZoneOptions"));
    answers_.clear();
  }
  Execute(ZonesView::OptionsMode::kMod, ZoneOptionsModel(options));
  windows_.Close();
  QTest::qWait(0);
  EXPECT_THAT(answers_, IsEmpty()) << "the program ends";
}

TEST_F(ZoneWindowsTest, FilesAreAskedForWithoutWaiting) {
  const fakes::TemporaryFolder folder;
  std::vector<std::string> files;
  const auto take = [&](const std::filesystem::path& file) { files.push_back(file.string()); };
  const auto choose = [&](const std::string& name) {
    auto* dialog = Find<QFileDialog>("zoneFileDialog");
    Find<QLineEdit>("fileNameEdit")->setText(QString::fromStdString((folder.Path() / name).string()));
    QTest::keyClick(dialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !files.empty(); }));
    return std::exchange(files, {});
  };
  windows_.AskExportFile(take);
  EXPECT_FALSE(Find<QFileDialog>("zoneFileDialog")->isModal());
  EXPECT_THAT(choose("z"), ElementsAre((folder.Path() / "z.geojson").string()));
  fakes::WriteFile(folder.Path() / "z.kml", "");
  windows_.AskExportFile(take);
  emit Find<QFileDialog>("zoneFileDialog")->filterSelected("KML (*.kml)");
  EXPECT_THAT(choose("z"), ElementsAre((folder.Path() / "z.kml").string()))
      << "one that exists is asked about by who gets it";
  windows_.AskImportFile(take);
  EXPECT_THAT(choose("missing.json"), ElementsAre((folder.Path() / "missing.json").string()));
}

TEST_F(ZoneWindowsTest, ProgressIsShownUntilItIsCancelled) {
  int cancelled = 0;
  const auto show = [&](int percent) { windows_.ShowProgress("Reading", percent, [&] { ++cancelled; }); };
  show(-1);
  auto* bar = Find<QProgressBar>("");
  EXPECT_EQ(bar->maximum(), 0) << "nobody knows how far it is";
  show(40);
  EXPECT_EQ(bar->value(), 40);
  EXPECT_EQ(bar->maximum(), 100);
  auto* window = Find<QDialog>("zoneProgress");
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  Press(Qt::Key_Escape);
  EXPECT_EQ(cancelled, 1);
  EXPECT_FALSE(window->isVisible());
  show(50);
  EXPECT_TRUE(window->isVisible());
  windows_.HideProgress();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(cancelled, 1);
}

TEST_F(ZoneWindowsTest, ThePathStandsBesideThePointerInsideTheWindow) {
  const QRect room = owner_.rect();
  const std::string endless(1000, 'x');
  for (const QPoint& at : {QPoint(100, 100), room.bottomRight(), room.topLeft(), room.bottomLeft()}) {
    for (const std::string& path : {std::string("R&D \"x\", <b> › Bay"), endless}) {
      QCursor::setPos(owner_.mapToGlobal(at));
      windows_.ShowPath(path);
      auto* tip = Find<QLabel>("zonePath");
      ASSERT_TRUE(tip->isVisible());
      EXPECT_TRUE(room.contains(tip->geometry())) << at.x() << ' ' << at.y();
      EXPECT_FALSE(tip->geometry().contains(at)) << "the pointer would be over it";
      EXPECT_EQ(tip->accessibleName().toStdString(), path);
      EXPECT_EQ(tip->text().toStdString() == path, path != endless);
      EXPECT_EQ(tip->textFormat(), Qt::PlainText);
      windows_.HidePath();
      EXPECT_FALSE(tip->isVisible());
    }
  }
}

TEST_F(ZoneWindowsTest, AddOrReplace) {
  using Choice = ZonesView::ImportChoice;
  std::vector<Choice> choices;
  const auto ask = [&] {
    windows_.AskAddOrReplace("2 zones", [&](Choice choice) { choices.push_back(choice); });
    return Find<QMessageBox>("importQuestion");
  };
  for (const QString caption : {"Add", "Replace", ""}) {
    const std::size_t before = choices.size();
    for (QAbstractButton* button : ask()->buttons())
      if (!caption.isEmpty() && button->text().contains(caption)) button->click();
    if (caption.isEmpty()) QTest::keyClick(Find<QMessageBox>("importQuestion"), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return choices.size() == before + 1; }));
  }
  EXPECT_THAT(choices, ElementsAre(Choice::kAdd, Choice::kReplace, Choice::kCancel));
}

class ZoneListTest : public ZoneWindowsTest {
 protected:
  ZoneListTest() {
    model_.mayChange = [this] { return mayChange_; };
    SetZones({{1, "Depot"}, {2, "Bay"}, {2, "Gate"}, {1, "Yard"}});
    windows_.ShowList(
        model_,
        {[this](ZoneOrdinal zone) { Note("zoom", zone); }, [this](ZoneOrdinal zone) { Note("delete", zone); },
         [this](ZoneOrdinal zone, const std::string& name) { Note("rename to " + name, zone); }});
    list_ = Find<QTreeView>("zoneTree");
    EXPECT_TRUE(QTest::qWaitForWindowActive(list_->window()));
  }
  void SetZones(const std::vector<std::pair<int, const char*>>& zones) {
    ZoneTreeBuilder builder(ZoneKind::kAlerted);
    for (const auto& [depth, name] : zones)
      builder.Append(depth, {"", name}, std::vector<ZoneVertex>{{1, 2}, {3, 4}, {5, 6}});
    tree_ = builder.Build();
  }
  void Note(const std::string& what, ZoneOrdinal zone) { done_.push_back(what + " " + std::to_string(zone)); }
  std::string Current() { return list_->currentIndex().siblingAtColumn(0).data().toString().toStdString(); }

  ZoneTree tree_;
  ZoneListModel model_{tree_};
  bool mayChange_ = true;
  std::vector<std::string> done_;
  QTreeView* list_ = nullptr;
};

TEST_F(ZoneListTest, TheTreeByKeyboard) {
  EXPECT_EQ(QApplication::focusWidget(), list_);
  EXPECT_EQ(list_->accessibleName(), "Zones");
  EXPECT_EQ(Current(), "1 Depot");
  Press(Qt::Key_Down);
  EXPECT_EQ(Current(), "1.1 Bay") << "unfolded";
  EXPECT_EQ(list_->currentIndex().siblingAtColumn(1).data(), "Non-Alert");
  Press(Qt::Key_Return);
  Press(Qt::Key_Delete);
  Press(Qt::Key_F2);
  auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_TRUE(editor);
  EXPECT_EQ(editor->text(), "Bay") << "without its number";
  editor->selectAll();
  Press(Qt::Key_Delete);
  Type("Dock");
  Press(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return done_.size() == 3; }));
  EXPECT_THAT(done_, ElementsAre("zoom 1", "delete 1", "rename to Dock 1"));
  EXPECT_TRUE(list_->isVisible()) << "Enter closes nothing";
  QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(list_);
  EXPECT_EQ(seen->role(), QAccessible::Tree);
  Press(Qt::Key_Escape);
  QTest::qWait(0);
  EXPECT_FALSE(owner_.findChild<QTreeView*>("zoneTree"));
}

TEST_F(ZoneListTest, AnotherListKeepsPlaceAndFolds) {
  Press(Qt::Key_Left);  // folds the depot
  Press(Qt::Key_Down);
  EXPECT_EQ(Current(), "2 Yard");
  SetZones({{1, "Depot"}, {2, "Bay"}, {2, "Gate"}});
  windows_.RefreshList();
  EXPECT_EQ(Current(), "1 Depot") << "what the last there is is folded into";
  EXPECT_FALSE(list_->isExpanded(list_->currentIndex()));
  SetZones({});
  windows_.RefreshList();
  for (const char* button : {"cmdZoom", "cmdRename", "cmdDelete"})
    EXPECT_FALSE(Find<QPushButton>(button)->isEnabled()) << button;
  Press(Qt::Key_Delete);
  Press(Qt::Key_Return);
  EXPECT_THAT(done_, IsEmpty());
}

TEST_F(ZoneListTest, WhileAShapeIsDrawnNothingChanges) {
  mayChange_ = false;
  windows_.RefreshList();
  Press(Qt::Key_Delete);
  Press(Qt::Key_F2);
  EXPECT_EQ(QApplication::focusWidget(), list_);
  Press(Qt::Key_Return);
  EXPECT_THAT(done_, ElementsAre("zoom 0"));
}

TEST_F(ZoneListTest, ManyAndDeepZonesOpen) {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  for (int depth = 1; depth <= 20'000; ++depth) builder.Append(depth, {"", "Deep"}, {});
  for (int i = 0; i < 20'000; ++i) builder.Append(1, {"", "Flat"}, {});
  tree_ = builder.Build();
  windows_.RefreshList();
  Press(Qt::Key_End);
  EXPECT_EQ(Current(), "20001 Flat");
}

}  // namespace
}  // namespace pallomir
