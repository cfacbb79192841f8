#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <QProcess>
#include <cerrno>

#include "fakes/temporary_folder.h"
#include "platform/qt/local_instance_signal.h"
#include "platform/qt/lock_file_mutex.h"
#include "platform/qt/shared_file.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

constexpr char kName[] = "Pallomir Browser";

class Instance : public testing::Test {
 protected:
  Instance() { qunsetenv("XDG_ACTIVATION_TOKEN"); }
  ~Instance() override { qunsetenv("XDG_RUNTIME_DIR"); }

  std::string StartHelper(QProcess& process, const char* verb) {
    process.start(MUTEX_HELPER, {verb, QString::fromStdString(Folder().string()), kName});
    process.waitForReadyRead();
    return process.readLine().trimmed().toStdString();
  }
  std::string Ask(const char* verb = "ask") {
    QProcess process;
    const std::string answer = StartHelper(process, verb);
    process.closeWriteChannel();
    process.waitForFinished();
    return answer;
  }

  // That of the settings; made by who needs it first.
  std::filesystem::path Folder() const { return folder_.Path() / "pallomir"; }

  fakes::TemporaryFolder folder_;
  std::vector<std::string> lines_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { lines_.push_back(line); }};
};

TEST_F(Instance, MutexIsSeenByOtherProcessesUntilReleased) {
  LockFileMutex mutex(Folder());
  EXPECT_EQ(Ask(), "free");
  ASSERT_TRUE(mutex.Create(kName));
  EXPECT_FALSE(mutex.IsOwnedElsewhere(kName));
  EXPECT_EQ(Ask(), "owned");
  EXPECT_EQ(Ask("own"), "no");
  EXPECT_EQ(mutex.Release(), 0);
  EXPECT_EQ(mutex.Release(), EPERM);
  EXPECT_EQ(Ask(), "free");
}

TEST_F(Instance, MutexOfAKilledProcessIsFree) {
  LockFileMutex mutex(Folder());
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
    LockFileMutex mutex(Folder());
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
  std::filesystem::create_symlink(target, SharedFile(Folder(), kName, ".lock"));
  LockFileMutex mutex(Folder());
  EXPECT_FALSE(mutex.IsOwnedElsewhere(kName));
  EXPECT_FALSE(mutex.Create(kName));
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(Instance, WhoUsesTheSameFolderSharesTheLockWhateverTheSessionIs) {
  const auto runtime = folder_.Path() / "runtime";
  std::filesystem::create_directory(runtime);
  LockFileMutex mutex(Folder());
  qputenv("XDG_RUNTIME_DIR", runtime.c_str());
  ASSERT_TRUE(mutex.Create(kName));
  qunsetenv("XDG_RUNTIME_DIR");
  EXPECT_EQ(Ask(), "owned");
  EXPECT_FALSE(LockFileMutex(folder_.Path() / "other").IsOwnedElsewhere(kName));
}

TEST_F(Instance, SharedFilesLieInTheirFolderOrApartForEach) {
  EXPECT_EQ(SharedFile(Folder(), "a/../b c", ".lock").parent_path(), Folder());
  EXPECT_NE(SharedFile(Folder(), "a b", ".lock"), SharedFile(Folder(), "a_b", ".lock"));
  const auto other = folder_.Path() / "other";
  const std::size_t tooShort = Folder().string().size();
  EXPECT_NE(SharedFile(Folder(), "a", ".socket", tooShort), SharedFile(other, "a", ".socket", tooShort));
  for (const char* folder : {"", "relative", "/proc/nothing"}) {
    qputenv("XDG_RUNTIME_DIR", folder);
    for (const auto& file :
         {SharedFile(Folder(), "a", ".socket", tooShort), SharedFile("/proc/nothing", "a", ".lock")})
      EXPECT_EQ(file.parent_path(), std::filesystem::temp_directory_path());
  }
  qputenv("XDG_RUNTIME_DIR", other.c_str());
  EXPECT_EQ(SharedFile("/proc/nothing", "a", ".lock").parent_path(), other);
}

TEST_F(Instance, SecondStartRaisesTheFirstAndPassesItsToken) {
  // What a killed first instance leaves behind.
  fakes::WriteFile(SharedFile(Folder(), kName, ".socket"), "");
  LocalInstanceSignal first(Folder(), kName, trace_);
  int raised = 0;
  first.raiseWanted = [&] { ++raised; };
  first.Listen();
  qputenv("XDG_ACTIVATION_TOKEN", "token-7");
  LocalInstanceSignal(Folder(), kName, trace_).AskToRaise(4711);
  qunsetenv("XDG_ACTIVATION_TOKEN");
  EXPECT_EQ(raised, 0);
  EXPECT_TRUE(WaitFor([&] { return raised == 1; }));
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-7");
  struct stat status {};
  ASSERT_EQ(::stat(SharedFile(Folder(), kName, ".socket").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 077, 0u);
  EXPECT_THAT(lines_, testing::IsEmpty());
}

TEST_F(Instance, AskingNobodyIsTraced) {
  LocalInstanceSignal(Folder(), kName, trace_).AskToRaise(1);
  EXPECT_THAT(lines_, testing::ElementsAre(testing::HasSubstr("does not listen")));
}

}  // namespace
}  // namespace pallomir
