#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <QElapsedTimer>
#include <QProcess>
#include <cerrno>

#include "fakes/temporary_folder.h"
#include "platform/qt/local_instance_signal.h"
#include "platform/qt/lock_file_mutex.h"
#include "platform/qt/runtime_file.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

constexpr char kName[] = "Pallomir Browser";

class Instance : public testing::Test {
 protected:
  Instance() {
    qputenv("XDG_RUNTIME_DIR", folder_.Path().c_str());
    qunsetenv("XDG_ACTIVATION_TOKEN");
  }
  ~Instance() override { qunsetenv("XDG_RUNTIME_DIR"); }

  static std::string StartHelper(QProcess& process, const char* verb) {
    process.start(MUTEX_HELPER, {verb, kName});
    process.waitForReadyRead();
    return process.readLine().trimmed().toStdString();
  }
  static std::string Ask() {
    QProcess process;
    const std::string answer = StartHelper(process, "ask");
    process.waitForFinished();
    return answer;
  }

  fakes::TemporaryFolder folder_;
  std::vector<std::string> lines_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { lines_.push_back(line); }};
};

TEST_F(Instance, MutexIsSeenByOtherProcessesUntilReleased) {
  LockFileMutex mutex;
  EXPECT_EQ(Ask(), "free");
  ASSERT_TRUE(mutex.Create(kName));
  EXPECT_FALSE(mutex.IsOwnedElsewhere(kName));
  EXPECT_EQ(Ask(), "owned");
  QProcess second;
  EXPECT_EQ(StartHelper(second, "own"), "no");
  second.closeWriteChannel();
  second.waitForFinished();
  EXPECT_EQ(mutex.Release(), 0);
  EXPECT_EQ(mutex.Release(), EPERM);
  EXPECT_EQ(Ask(), "free");
}

TEST_F(Instance, MutexOfAKilledProcessIsFree) {
  LockFileMutex mutex;
  QProcess owner;
  ASSERT_EQ(StartHelper(owner, "own"), "own");
  EXPECT_TRUE(mutex.IsOwnedElsewhere(kName));
  EXPECT_FALSE(mutex.Create(kName));
  ::kill(static_cast<pid_t>(owner.processId()), SIGKILL);
  ASSERT_TRUE(owner.waitForFinished());
  EXPECT_FALSE(mutex.IsOwnedElsewhere(kName));
  EXPECT_TRUE(mutex.Create(kName));
}

TEST_F(Instance, MutexIsNotInheritedByStartedPrograms) {
  QProcess child;
  {
    LockFileMutex mutex;
    ASSERT_TRUE(mutex.Create(kName));
    child.start("sleep", {"30"});
    ASSERT_TRUE(child.waitForStarted());
  }
  EXPECT_EQ(Ask(), "free");
  child.kill();
  child.waitForFinished();
}

TEST_F(Instance, LinkInPlaceOfTheLockIsNotFollowed) {
  const auto target = folder_.Path() / "precious";
  std::filesystem::create_symlink(target, RuntimeFile(kName, ".lock"));
  LockFileMutex mutex;
  EXPECT_FALSE(mutex.IsOwnedElsewhere(kName));
  EXPECT_FALSE(mutex.Create(kName));
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(Instance, RuntimeFilesAreApartAndInTheFolderOfTheUser) {
  EXPECT_EQ(RuntimeFile("a/../b c", ".lock").parent_path(), folder_.Path());
  EXPECT_NE(RuntimeFile("a b", ".lock"), RuntimeFile("a_b", ".lock"));
  for (const char* folder : {"", "relative", "/proc/nothing"}) {
    qputenv("XDG_RUNTIME_DIR", folder);
    EXPECT_EQ(RuntimeFile("a", ".lock").parent_path(), std::filesystem::temp_directory_path());
  }
}

TEST_F(Instance, SecondStartRaisesTheFirstAndPassesItsToken) {
  // What a killed first instance leaves behind.
  fakes::WriteFile(RuntimeFile(kName, ".socket"), "");
  LocalInstanceSignal first(kName, trace_);
  int raised = 0;
  first.raiseWanted = [&] { ++raised; };
  first.Listen();
  qputenv("XDG_ACTIVATION_TOKEN", "token-7");
  LocalInstanceSignal(kName, trace_).AskToRaise(4711);
  qunsetenv("XDG_ACTIVATION_TOKEN");
  EXPECT_EQ(raised, 0);
  EXPECT_TRUE(WaitFor([&] { return raised == 1; }));
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-7");
  struct stat status {};
  ASSERT_EQ(::stat(RuntimeFile(kName, ".socket").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 077, 0u);
  EXPECT_THAT(lines_, testing::IsEmpty());
}

TEST_F(Instance, AskingNobodyIsTracedAndShort) {
  QElapsedTimer elapsed;
  elapsed.start();
  LocalInstanceSignal(kName, trace_).AskToRaise(1);
  EXPECT_LT(elapsed.elapsed(), 1500);
  EXPECT_THAT(lines_, testing::ElementsAre(testing::HasSubstr("does not listen")));
}

}  // namespace
}  // namespace pallomir
