#include "platform/qt/detached_starter.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "fakes/temporary_folder.h"
#include "wait.h"

namespace pallomir {
namespace {

class DetachedStarterTest : public testing::Test {
 protected:
  std::filesystem::path Script(const std::string& name, const std::string& text) {
    const auto path = folder_.Path() / name;
    fakes::WriteFile(path, text);
    ::chmod(path.c_str(), 0755);
    return path;
  }
  int RunToItsEnd(const std::string& text, const std::vector<std::string>& arguments = {}) {
    const auto start = starter_.Start(Script("run", "#!/bin/sh\n" + text), arguments, folder_.Path());
    EXPECT_TRUE(start.program) << start.error;
    EXPECT_TRUE(WaitFor([&] { return !start.program->IsRunning(); }));
    return start.program->ExitCode();
  }

  fakes::TemporaryFolder folder_;
  DetachedStarter starter_;
};

TEST_F(DetachedStarterTest, RunsInItsFolderAndTellsTheEnd) {
  EXPECT_EQ(RunToItsEnd("printf '%s|%s|%s' \"$1\" \"$2\" \"$PWD\" > out; exit 7", {"-r", "two words"}), 7);
  EXPECT_EQ(fakes::ReadFile(folder_.Path() / "out"), "-r|two words|" + folder_.Path().string());
  EXPECT_EQ(RunToItsEnd("kill -9 $$"), 128 + 9);
}

TEST_F(DetachedStarterTest, LeavesNothingOfTheClientOpen) {
  // A descriptor without the close-on-exec mark, as a library may have left one.
  const int leaked = ::dup(STDERR_FILENO);
  EXPECT_EQ(RunToItsEnd("ls -l /proc/$$/fd > out; cat /proc/$$/stat > stat; echo $$ > pid"), 0);
  ::close(leaked);
  const std::string open = fakes::ReadFile(folder_.Path() / "out");
  EXPECT_THAT(open, testing::Not(testing::ContainsRegex("(socket|pipe):")));
  // Its own session: the sixth field of the status is the session's number, which is the leader's.
  const std::string pid = fakes::ReadFile(folder_.Path() / "pid");
  EXPECT_THAT(fakes::ReadFile(folder_.Path() / "stat"),
              testing::HasSubstr(" " + pid.substr(0, pid.size() - 1) + " 0 "));
}

TEST_F(DetachedStarterTest, SaysWhyAProgramDoesNotStart) {
  fakes::WriteFile(folder_.Path() / "plain", "text");
  const std::pair<std::filesystem::path, int> cases[] = {{folder_.Path() / "missing", ENOENT},
                                                         {folder_.Path() / "plain" / "below", ENOTDIR},
                                                         {folder_.Path() / "plain", EACCES},
                                                         {Script("nonsense", "no program"), ENOEXEC}};
  for (const auto& [program, error] : cases) {
    const auto start = starter_.Start(program, {}, folder_.Path());
    EXPECT_FALSE(start.program);
    EXPECT_EQ(start.error, error) << program;
  }
}

}  // namespace
}  // namespace pallomir
