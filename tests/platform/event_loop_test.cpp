#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <future>
#include <thread>

#include "platform/qt/qt_event_loop.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

TEST(EventLoop, PostedWorkRunsInOrderAndAfterTheCaller) {
  QtEventLoop loop;
  std::vector<int> ran;
  loop.Post([&] {
    ran.push_back(1);
    loop.Post([&] { ran.push_back(3); });
  });
  loop.Post([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(WaitFor([&] { return ran.size() == 3; }));
  EXPECT_THAT(ran, testing::ElementsAre(1, 2, 3));
}

TEST(EventLoop, DropsWhatItsEndOvertakes) {
  bool ran = false;
  std::make_unique<QtEventLoop>()->Post([&] { ran = true; });
  QCoreApplication::processEvents();
  EXPECT_FALSE(ran);
}

TEST(EventLoop, WorkBesideItEndsBeforeItDoesAndTellsItInItsOwnThread) {
  std::atomic<int> worked = 0;
  std::vector<std::thread::id> told;
  {
    QtEventLoop loop;
    std::promise<void> go;
    std::thread::id worker;
    loop.RunBeside(
        [&] {
          go.get_future().wait();
          worker = std::this_thread::get_id();
          ++worked;
        },
        [&] { told.push_back(std::this_thread::get_id()); });
    EXPECT_EQ(worked, 0) << "the caller goes on";
    go.set_value();
    EXPECT_TRUE(WaitFor([&] { return !told.empty(); }));
    EXPECT_NE(worker, std::this_thread::get_id());
    loop.RunBeside([&] { ++worked; }, [&] { told.emplace_back(); });
  }
  EXPECT_EQ(worked, 2);
  QCoreApplication::processEvents();
  EXPECT_THAT(told, testing::ElementsAre(std::this_thread::get_id()));
}

TEST(Timer, TicksAgainAndAgainOnlyWhileEnabled) {
  QtEventLoop loop;
  int ticks = 0;
  const auto timer = loop.CreateTimer("tmrRedraw", 5, [&] { ++ticks; });
  LetPass(20);
  EXPECT_EQ(ticks, 0);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks >= 3; }));
  timer->SetEnabled(false);
  const int before = ticks;
  LetPass(20);
  EXPECT_EQ(ticks, before);
}

TEST(Timer, EnablingARunningOneDoesNotPutItsTickOff) {
  QtEventLoop loop;
  bool ticked = false;
  const auto timer = loop.CreateTimer("tmrRedraw", 100, [&] { ticked = true; });
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return timer->SetEnabled(true), ticked; }, 3000));
}

TEST(Timer, MayEndInsideItsOwnTick) {
  QtEventLoop loop;
  int ticks = 0;
  std::unique_ptr<Timer> timer;
  timer = loop.CreateTimer("once", 1, [&ticks, &timer, ballast = std::string(100, 'x')] {
    timer.reset();
    ticks += ballast.size() == 100;
  });
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks == 1; }));
  LetPass(10);
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace pallomir
