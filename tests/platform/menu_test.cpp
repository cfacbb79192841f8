#include <gmock/gmock.h>

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QTest>

#include "platform/qt/qt_menu.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

constexpr Command kPopup{1}, kType{2};

MenuItem Entry(std::string name, std::string caption, int index = 0, Command command = {}) {
  MenuItem item;
  item.command = command;
  item.name = std::move(name);
  item.caption = std::move(caption);
  item.index = index;
  return item;
}

class MenuTest : public testing::Test {
 protected:
  MenuTest() {
    MenuItem popup = Entry("mnuPopup", "&Map", 0, kPopup);
    MenuItem view = Entry("mnuView", "&View");
    for (int i = 1; i <= 3; ++i)
      view.children.push_back(Entry("mnuViewType", "Type &" + std::to_string(i), i, kType));
    view.children.push_back(Entry("mnuViewFit", "&Fit"));
    popup.children = {view, Entry("mnuLine", "-"), Entry("mnuAdd", "&Add Zone")};
    model_.bar.children.push_back(popup);
    model_.CheckOnly(kType, 2);
    model_.chosen = [this](const MenuItem& item) {
      chosen_.push_back(item.name + std::to_string(item.index));
    };
  }

  QAction* Action(const char* name) { return menu_.Menu()->findChild<QAction*>(name); }
  void Choose(const char* name) {
    menu_.Render();
    ASSERT_TRUE(Action(name)) << name;
    Action(name)->trigger();
  }

  MenuModel model_;
  QtMenu menu_{model_, kPopup};
  std::vector<std::string> chosen_;
};

TEST_F(MenuTest, ShowsWhatTheModelSaysWheneverItIsOpened) {
  for (int checked = 1; checked <= 2; ++checked) {
    model_.CheckOnly(kType, checked);
    model_.At("mnuAdd").enabled = checked == 1;
    model_.At("mnuViewFit").visible = checked == 2;
    menu_.PopUp({0, 0});
    ASSERT_EQ(menu_.Menu()->actions().size(), 3);
    QAction* view = Action("mnuView");
    ASSERT_TRUE(view && view->menu());
    EXPECT_EQ(view->text(), "&View");
    EXPECT_TRUE(menu_.Menu()->actions()[1]->isSeparator());
    EXPECT_EQ(Action("mnuAdd")->isEnabled(), checked == 1);
    EXPECT_EQ(Action("mnuViewFit") != nullptr, checked == 2) << "what is hidden is not announced as disabled";
    EXPECT_EQ(menu_.Menu()->accessibleName() + view->menu()->accessibleName(), "MapView");
    EXPECT_FALSE(view->isCheckable());
    EXPECT_EQ(Action("mnuViewType(1)")->isChecked(), checked == 1);
    EXPECT_EQ(Action("mnuViewType(2)")->isChecked(), checked == 2);
    menu_.Menu()->close();
  }
}

TEST_F(MenuTest, AHotKeyIsShownAndNotTaken) {
  model_.At("mnuAdd").hotKey = "Ctrl+T";
  MenuItem& plain = model_.At("mnuViewFit");
  plain.isPlainText = true;
  plain.caption = "A&B\tC";
  menu_.Render();
  EXPECT_EQ(Action("mnuAdd")->text(), "&Add Zone\tCtrl+T");
  EXPECT_TRUE(Action("mnuAdd")->shortcut().isEmpty());
  EXPECT_EQ(Action("mnuViewFit")->text(), "A&&B C") << "a tab of the user's is none of ours";
}

TEST_F(MenuTest, EntriesAreAnnouncedWithStateAndKey) {
  MenuItem& add = model_.At("mnuAdd");
  add.caption = "Add && &Zone";
  add.hotKey = "Ctrl+T";
  for (const auto& [checkable, checked] : {std::pair(false, false), {true, false}, {true, true}}) {
    add.checkable = checkable;
    add.checked = checked;
    menu_.Render();
    QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(menu_.Menu());
    QAccessibleInterface* entry = menu->child(2);
    EXPECT_EQ(entry->role(), checkable ? QAccessible::CheckBox : QAccessible::MenuItem);
    EXPECT_EQ(entry->state().checkable, checkable);
    EXPECT_EQ(entry->state().checked, checked);
    EXPECT_EQ(entry->text(QAccessible::Name), "Add & Zone");
    EXPECT_EQ(entry->text(QAccessible::Accelerator), "Ctrl+T");
    EXPECT_EQ(entry->parent(), menu);
    chosen_.clear();
    entry->actionInterface()->doAction(entry->actionInterface()->actionNames().front());
    EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  }
}

TEST_F(MenuTest, ReportsTheEntryAsItIsNow) {
  Choose("mnuViewType(3)");
  model_.At("mnuPopup").children.front().children.push_front(Entry("mnuNew", "New"));
  EXPECT_TRUE(chosen_.empty());
  EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuViewType3"));
}

TEST_F(MenuTest, TellsOfTheClosingAfterTheChoice) {
  model_.closed = [this] { chosen_.push_back("closed"); };
  menu_.PopUp({0, 0});
  menu_.Menu()->setActiveAction(Action("mnuAdd"));
  QTest::keyClick(menu_.Menu(), Qt::Key_Return);
  EXPECT_TRUE(WaitFor([&] { return chosen_.size() == 2; }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuAdd0", "closed"));
  menu_.PopUp({0, 0});
  menu_.PopUp({5, 5});  // closes it for a moment
  LetPass(20);
  EXPECT_EQ(chosen_.size(), 2u);
  QTest::keyClick(menu_.Menu(), Qt::Key_Escape);
  EXPECT_TRUE(WaitFor([&] { return chosen_.size() == 3; }));
}

TEST_F(MenuTest, EntryThatWentMeanwhileIsNotReported) {
  Choose("mnuViewType(3)");
  model_.TruncateArray(kType, 3);
  Choose("mnuAdd");
  model_.At("mnuAdd").enabled = false;
  Choose("mnuViewFit");
  EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuViewFit0"));
}

TEST_F(MenuTest, EntriesWithoutANameAreToldApartByTheirCommand) {
  MenuItem& popup = model_.At("mnuPopup");
  for (const int command : {4007, 4017})
    popup.children.push_back(Entry("", "Zone " + std::to_string(command), 0, Command{command}));
  Command chosen{};
  model_.chosen = [&](const MenuItem& item) {
    model_.At("mnuPopup").children.clear();  // the listener may rebuild everything
    chosen = item.command;
  };
  menu_.Render();
  menu_.Menu()->actions().back()->trigger();
  EXPECT_TRUE(WaitFor([&] { return chosen != Command{}; }));
  EXPECT_EQ(chosen, Command{4017});
}

TEST_F(MenuTest, ASubmenuMayBeFilledWhenItOpens) {
  int filled = 0;
  const auto fill = [&filled](MenuItem& item) {
    item.children = {Entry("mnuZone", "Zone", ++filled, Command{5})};
  };
  MenuItem tree = Entry("mnuTree", "&Tree");
  tree.fill = [&fill](MenuItem& item) {
    item.children = {Entry("mnuBranch", "Branch")};
    item.children.front().fill = fill;
  };
  model_.At("mnuPopup").children.push_back(tree);
  menu_.Render();
  ASSERT_TRUE(Action("mnuTree") && Action("mnuTree")->menu());
  EXPECT_FALSE(Action("mnuBranch"));
  for (int opened = 1; opened <= 2; ++opened) {
    emit Action("mnuTree")->menu()->aboutToShow();
    ASSERT_TRUE(Action("mnuBranch"));
    EXPECT_EQ(filled, opened - 1) << "not before it opens itself";
    emit Action("mnuBranch")->menu()->aboutToShow();
    EXPECT_EQ(Action("mnuBranch")->menu()->actions().size(), 1);
  }
  Action("mnuZone(2)")->trigger();
  EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuZone2"));
}

}  // namespace
}  // namespace pallomir
