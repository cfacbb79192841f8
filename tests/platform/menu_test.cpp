#include <gmock/gmock.h>

#include <QAction>
#include <QElapsedTimer>
#include <QMenu>

#include "platform/qt/qt_menu.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

MenuItem Entry(std::string name, std::string caption, int index = 0) {
  MenuItem item;
  item.name = std::move(name);
  item.caption = std::move(caption);
  item.index = index;
  return item;
}

class MenuTest : public testing::Test {
 protected:
  MenuTest() {
    MenuItem popup = Entry("mnuPopup", "&Map");
    MenuItem view = Entry("mnuView", "&View");
    for (int i = 1; i <= 3; ++i)
      view.children.push_back(Entry("mnuViewType", "Type &" + std::to_string(i), i));
    view.children.push_back(Entry("mnuViewFit", "&Fit"));
    popup.children = {view, Entry("mnuLine", "-"), Entry("mnuAdd", "&Add Zone")};
    model_.bar.children.push_back(popup);
    model_.CheckOnly("mnuViewType", 2);
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
  QtMenu menu_{model_, "mnuPopup"};
  std::vector<std::string> chosen_;
};

TEST_F(MenuTest, ShowsWhatTheModelSaysWheneverItIsOpened) {
  for (int checked = 1; checked <= 2; ++checked) {
    model_.CheckOnly("mnuViewType", checked);
    model_.At("mnuAdd").enabled = checked == 1;
    model_.At("mnuViewFit").visible = checked == 2;
    menu_.PopUp({0, 0});
    EXPECT_TRUE(menu_.Menu()->isVisible());
    ASSERT_EQ(menu_.Menu()->actions().size(), 3);
    QAction* view = Action("mnuView");
    ASSERT_TRUE(view && view->menu());
    EXPECT_EQ(view->text(), "&View");
    EXPECT_TRUE(menu_.Menu()->actions()[1]->isSeparator());
    EXPECT_EQ(Action("mnuAdd")->isEnabled(), checked == 1);
    EXPECT_EQ(Action("mnuViewFit")->isVisible(), checked == 2);
    EXPECT_FALSE(Action("mnuViewFit")->isCheckable());
    EXPECT_TRUE(Action("mnuViewType(3)")->isCheckable());
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

TEST_F(MenuTest, ReportsTheEntryAsItIsNow) {
  Choose("mnuViewType(3)");
  model_.At("mnuPopup").children.front().children.push_front(Entry("mnuNew", "New"));
  EXPECT_TRUE(chosen_.empty());
  EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuViewType3"));
}

TEST_F(MenuTest, EntryThatWentMeanwhileIsNotReported) {
  Choose("mnuViewType(3)");
  DeleteItem(model_.At("mnuView"), 2);
  Choose("mnuAdd");
  model_.At("mnuAdd").enabled = false;
  Choose("mnuViewFit");
  EXPECT_TRUE(WaitFor([&] { return !chosen_.empty(); }));
  EXPECT_THAT(chosen_, testing::ElementsAre("mnuViewFit0"));
}

TEST_F(MenuTest, EntriesWithoutANameAreToldApartByTheirIdentifier) {
  MenuItem& popup = model_.At("mnuPopup");
  for (int identifier : {4007, 4017}) {
    MenuItem zone = Entry("", "Zone " + std::to_string(identifier));
    zone.identifier = identifier;
    popup.children.push_back(zone);
  }
  int identifier = 0;
  model_.chosen = [&](const MenuItem& item) {
    // The listener may rebuild everything.
    model_.At("mnuPopup").children.clear();
    identifier = item.identifier;
  };
  menu_.Render();
  menu_.Menu()->actions().back()->trigger();
  EXPECT_TRUE(WaitFor([&] { return identifier != 0; }));
  EXPECT_EQ(identifier, 4017);
}

// The largest zone tree in use: opening the menu must not be felt.
TEST_F(MenuTest, OpensLargeMenusAtOnce) {
  for (int zone = 0; zone < 300; ++zone) {
    MenuItem item = Entry("", "Zone " + std::to_string(zone));
    for (int i = 0; i < 9; ++i) item.children.push_back(Entry("", "Entry"));
    model_.At("mnuPopup").children.push_back(item);
  }
  menu_.Render();
  QElapsedTimer elapsed;
  elapsed.start();
  menu_.Render();
  RecordProperty("milliseconds", static_cast<int>(elapsed.elapsed()));
  EXPECT_LT(elapsed.elapsed(), 1000);
}

}  // namespace
}  // namespace pallomir
