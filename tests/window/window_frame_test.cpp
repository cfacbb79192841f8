#include "window/window_frame.h"

#include <gmock/gmock.h>

#include "fakes/fake_view.h"
#include "fakes/room_ports.h"
#include "window/focus_holder.h"

namespace pallomir {
namespace {

class WindowFrameTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  WindowFrameTest() {
    frame_.laidOut = [this] { ++layouts_; };
  }
  void Start() {
    frame_.Restore();
    frame_.Open();
  }

  fakes::FakeWindow window_;
  fakes::FakeView view_;
  WindowFrame frame_{view_, window_, choices_.window, loop_, trace_};
  int layouts_ = 0;
};

TEST_F(WindowFrameTest, OnlyThePlacesThatTheUserChoseAreStored) {
  settings_.values["WindowState"] = "0";
  Start();
  loop_.Advance(250);
  const PixelRect kMaximised{0, 20, 1600, 1000};
  const auto lies = [&](const PixelRect& bounds) {
    window_.bounds = bounds;
    frame_.Moved();
    frame_.Resized();
  };
  lies({10, 30, 800, 600});
  frame_.Maximise();
  lies(kMaximised);
  EXPECT_EQ(settings_.saved["WindowPos_L"], "10") << "a button right after a move";
  frame_.Normal();
  lies({20, 30, 800, 600});
  lies(kMaximised);  // its state comes behind it
  frame_.StateGiven(WindowMode::kMaximised);
  loop_.Advance(250);
  EXPECT_EQ(settings_.saved["WindowPos_L"], "20");
  frame_.StateGiven(WindowMode::kNormal);
  lies({25, 30, 800, 600});
  frame_.StateGiven(WindowMode::kMaximised);
  lies(kMaximised);  // its state has come before it
  loop_.Advance(250);
  EXPECT_EQ(settings_.saved["WindowPos_L"], "25");
  frame_.StateGiven(WindowMode::kNormal);
  lies({30, 30, 800, 600});
  frame_.StateGiven(WindowMode::kMinimised);
  loop_.Advance(250);
  EXPECT_EQ(settings_.saved["WindowPos_L"], "30");
  frame_.MinimiseEnded();
  lies({0, 20, 800, 1000});  // pushed against the left edge
  loop_.Advance(250);
  window_.maximisedOneWay = true;
  lies({40, 20, 700, 1000});
  loop_.Advance(250);
  frame_.Store();
  EXPECT_EQ(settings_.saved["WindowPos_L"], "30");
  EXPECT_EQ(settings_.saved["WindowPos_H"], "600");
}

TEST_F(WindowFrameTest, APlacementOffEveryScreenIsMovedIntoReach) {
  settings_.values = {{"WindowState", "0"},
                      {"WindowPos_L", "5000"},
                      {"WindowPos_T", "40"},
                      {"WindowPos_W", "800"},
                      {"WindowPos_H", "600"}};
  Start();
  EXPECT_EQ(window_.bounds, (PixelRect{800, 40, 800, 600}));
}

TEST_F(WindowFrameTest, WherePositionsMeanNothingOnlySizesAreStored) {
  settings_.values["WindowState"] = "0";
  window_.knowsPosition = false;
  Start();
  window_.bounds = {7, 8, 900, 700};
  frame_.Resized();
  loop_.Advance(250);
  EXPECT_EQ(settings_.saved.count("WindowPos_L"), 0u);
  EXPECT_EQ(settings_.saved["WindowPos_W"], "900");
}

TEST_F(WindowFrameTest, FullScreenGoesBackToTheBoundsBefore) {
  settings_.values["WindowState"] = "0";
  Start();
  window_.bounds = {11, 22, 833, 644};
  frame_.FullScreen();
  EXPECT_TRUE(window_.topmost);
  EXPECT_EQ(view_.mode, WindowMode::kFullScreen);
  window_.bounds = {0, 0, 1600, 1024};
  frame_.Resized();
  frame_.Minimise();
  EXPECT_TRUE(frame_.IsMinimised());
  frame_.MinimiseEnded();
  frame_.Normal();
  EXPECT_FALSE(window_.topmost);
  EXPECT_EQ(window_.bounds, (PixelRect{11, 22, 833, 644}));
  frame_.FullScreen();
  frame_.Store();
  EXPECT_EQ(settings_.saved["WindowState"], "2");
}

TEST_F(WindowFrameTest, SizesCountBetweenStartAndEndAndOutsideOfChanges) {
  settings_.values["WindowState"] = "0";
  frame_.Restore();
  frame_.Resized();
  frame_.Moved();
  frame_.StateGiven(WindowMode::kMaximised);
  EXPECT_EQ(layouts_, 0);
  frame_.Open();
  window_.resized = [this] { frame_.Resized(); };
  frame_.FullScreen();
  EXPECT_EQ(layouts_, 1) << "once, when the change is through";
  frame_.Resized();
  EXPECT_EQ(layouts_, 2);
  frame_.Normal();
  frame_.Moved();
  frame_.Close();
  settings_.saved.clear();
  frame_.Resized();
  frame_.Moved();
  frame_.StateGiven(WindowMode::kMaximised);
  loop_.Advance(1000);
  EXPECT_EQ(layouts_, 3);
  EXPECT_TRUE(settings_.saved.empty());
}

TEST(FocusHolder, GivesTheKeyboardBackUnlessItIsHeldOff) {
  fakes::FakeEventLoop loop;
  fakes::FakeView view;
  FocusHolder focus(view, loop);
  focus.Open();
  loop.Advance(250);
  EXPECT_EQ(view.focusReturns, 1);
  focus.HoldOff(true);
  focus.Return();
  loop.Advance(1000);
  EXPECT_EQ(view.focusReturns, 1);
  focus.HoldOff(false);
  focus.Return();
  EXPECT_EQ(view.focusReturns, 2);
  focus.Close();
  focus.Return();
  loop.Advance(1000);
  EXPECT_EQ(view.focusReturns, 2);
}

}  // namespace
}  // namespace pallomir
