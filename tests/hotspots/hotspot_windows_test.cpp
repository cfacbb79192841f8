#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "fakes/fake_system.h"
#include "hotspots/formHotSpots_Edit.h"
#include "hotspots/formSecureHotSpots_Edit.h"
#include "ui/question_queue.h"

namespace pallomir {
namespace {

using testing::ElementsAre;

class HotspotWindowsTest : public testing::Test {
 protected:
  void Show(ListGridWidget* editor) {
    editor_ = editor;
    editor->show();
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor));
  }
  QLineEdit* Box(const char* name) { return editor_->findChild<QLineEdit*>(name); }
  void Press(const char* button) {
    QTest::mouseClick(editor_->findChild<QPushButton*>(button), Qt::LeftButton);
  }

  QWidget owner_;
  fakes::FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  QPointer<QWidget> editor_;
};

TEST_F(HotspotWindowsTest, TheAddRowBecomesARowAndIsApplied) {
  auto* editor = new formHotSpots_Edit(&owner_, {"home"}, questions_);
  std::vector<std::string> applied;
  editor->apply = [&](const std::vector<std::string>& ssids) { applied = ssids; };
  Show(editor);
  EXPECT_EQ(editor->windowTitle(), "Pallomir Wi-Fi HotSpots Edit Window");
  EXPECT_FALSE(editor->findChild<QPushButton*>("cmdAddRow")->isVisible());
  EXPECT_FALSE(Box("txtSSID(3)"));
  Box("txtSSID(2)")->setFocus();
  EXPECT_FALSE(editor->findChild<QPushButton*>("cmdDeleteRow")->isEnabled());
  QTest::keyClicks(Box("txtSSID(2)"), "Cafe");
  ASSERT_TRUE(Box("txtSSID(3)"));
  EXPECT_EQ(Box("txtSSID(3)")->text(), "Add New Wi-Fi HotSpot's Name (SSID) Here");
  EXPECT_TRUE(editor->findChild<QPushButton*>("cmdDeleteRow")->isEnabled());
  EXPECT_FALSE(editor->findChild<QPushButton*>("cmdMoveRowDn")->isEnabled());
  Press("cmdMoveRowUp");
  Press("cmdApply");
  EXPECT_THAT(applied, ElementsAre("Cafe", "home"));
  EXPECT_FALSE(editor_ && editor_->isVisible());
}

TEST_F(HotspotWindowsTest, TheProtocolIsChosenByMouseAndKeyboard) {
  auto* editor = new formSecureHotSpots_Edit(&owner_, {{"home", "WPA2", "abc"}}, questions_);
  std::vector<SecureHotspot> applied;
  editor->apply = [&](const std::vector<SecureHotspot>& hotspots) { applied = hotspots; };
  Show(editor);
  EXPECT_EQ(editor->windowTitle(), "Pallomir Wi-Fi Secure HotSpots List");
  QTest::mouseClick(Box("txtProtocol(1)"), Qt::LeftButton);
  EXPECT_EQ(Box("txtProtocol(1)")->text(), "WPA2-E");
  QTest::keyClick(Box("txtProtocol(1)"), Qt::Key_Space);
  EXPECT_EQ(Box("txtProtocol(1)")->text(), "WEP");
  QTest::keyClicks(Box("txtProtocol(1)"), "x");
  QTest::mouseClick(Box("txtProtocol(2)"), Qt::LeftButton);
  EXPECT_EQ(Box("txtProtocol(2)")->text(), "Protocol");
  QTest::keyClick(Box("txtPassword(1)"), Qt::Key_End);
  QTest::keyClicks(Box("txtPassword(1)"), "~d");
  Press("cmdApply");
  EXPECT_THAT(applied, ElementsAre(SecureHotspot{"home", "WEP", "abc~d"}));
}

}  // namespace
}  // namespace pallomir
