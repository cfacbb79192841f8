#include <sys/wait.h>

#include <algorithm>
#include <csignal>

#include "host_testing.h"
#include "servicehost/spawn.h"

namespace pallomir::servicehost {
namespace {

using namespace std::literals;
using testing::HasSubstr;

class SupervisedTest : public HostTest {
 protected:
  // Kills one of the service's processes as if it had crashed.
  static void Crash(const std::optional<ProcessIdentity>& identity) {
    const auto process = Running(identity);
    ASSERT_TRUE(process);
    process->Signal(SIGKILL);
    ASSERT_TRUE(process->AwaitEnd(10s));
  }
};

TEST_F(SupervisedTest, FromInstallToUninstall) {
  EXPECT_THAT(Start(), Ended(1, "not installed"));
  EXPECT_THAT(Stop(), Ended(0, "not running"));
  EXPECT_THAT(Host({"-u"}), Ended(0, "not installed"));

  InstallAt("127.0.43.11");
  EXPECT_THAT(InstallLog(), HasSubstr("does NOT start by itself"));
  EXPECT_THAT(InstallLog(), HasSubstr(station_.string()));
  EXPECT_THAT(fakes::ReadFile(SettingsFile()), HasSubstr("\nDemo=off\n"));
  EXPECT_THAT(Stop(), Ended(0, "was not running"));

  EXPECT_THAT(Start(), Ended(0, "was started"));
  EXPECT_TRUE(IsAnswering());
  const auto first = ReadProcesses().station;
  EXPECT_THAT(Start(), Ended(0, "already running"));
  const RunOutcome again = Host({"-i"});
  EXPECT_THAT(again, Ended(0, "installed before"));
  EXPECT_EQ(InstallLog(), again.output);
  EXPECT_LE(std::ranges::count(InstallLog(), '\n'), 20);
  EXPECT_THAT(InstallLog(), HasSubstr("127.0.43.11:2435")) << "the settings were kept";
  EXPECT_EQ(ReadProcesses().station, first) << "what runs was left alone";

  EXPECT_THAT(Stop(), Ended(0, "was stopped"));
  EXPECT_TRUE(IsSilent());
  EXPECT_THAT(Start(), Ended(0, "was started"));
  EXPECT_THAT(Host({"-u"}), Ended(0, "was uninstalled"));
  EXPECT_TRUE(IsSilent());
  EXPECT_FALSE(ReadInstallation());
  for (const auto& entry : fs::directory_iterator(SettingsFile().parent_path()))
    EXPECT_EQ(entry.path(), SettingsFile()) << "is left";
  EXPECT_THAT(Start(), Ended(1, "not installed"));
}

TEST_F(SupervisedTest, StationThatCrashesComesBack) {
  InstallAt("127.0.43.12");
  ASSERT_EQ(Start().exitCode, 0);
  const auto first = ReadProcesses().station;
  Crash(first);
  EXPECT_THAT(Start(), Ended(0, "already running")) << "its supervisor brings it back";
  EXPECT_NE(ReadProcesses().station, first);
  EXPECT_THAT(fakes::ReadFile(StationLogFile()),
              HasSubstr("ended with signal 9 and is started again in 1 s"));

  // Stopped while it waits for the next try.
  Crash(ReadProcesses().station);
  EXPECT_THAT(Stop(), Ended(0, "was stopped"));
  EXPECT_TRUE(IsSilent());
}

TEST_F(SupervisedTest, SupervisorThatCrashesIsReplaced) {
  InstallAt("127.0.43.13");
  ASSERT_EQ(Start().exitCode, 0);
  Crash(ReadProcesses().supervisor);
  EXPECT_TRUE(IsAnswering()) << "the station goes on";
  EXPECT_THAT(Start(), Ended(0, "lost its supervisor"));
  EXPECT_TRUE(IsAnswering());
  Crash(ReadProcesses().supervisor);
  EXPECT_THAT(Stop(), Ended(0, "was stopped"));
  EXPECT_TRUE(IsSilent());
}

TEST_F(SupervisedTest, SupervisorThatLostItsPidFileIsFound) {
  InstallAt("127.0.43.19");
  ASSERT_EQ(Start().exitCode, 0);
  const ServiceProcesses known = ReadProcesses();
  fs::remove(PidFile());
  EXPECT_EQ(ReadProcesses().supervisor, known.supervisor);
  EXPECT_THAT(Start(), Ended(0, "already running"));
  EXPECT_THAT(RunProgram({host_, "--supervise"}, 30s), Ended(1, "another supervisor runs already"));
  EXPECT_THAT(Stop(), Ended(0, "was stopped"));
  EXPECT_TRUE(IsSilent());

  ASSERT_EQ(Start().exitCode, 0);
  ProcessIdentity stranger = IdentityOf(::getpid()).value();
  --stranger.startTicks;
  fakes::WriteFile(PidFile(), "Supervisor=" + ToText(stranger) + "\nStation=\n\0\xff"s);
  EXPECT_THAT(Host({"-u"}), Ended(0, "was uninstalled"));
  EXPECT_TRUE(IsSilent());
}

TEST_F(SupervisedTest, WhatLostAllItsFilesIsTold) {
  InstallAt("127.0.43.20");
  ASSERT_EQ(Start().exitCode, 0);
  const ServiceProcesses lost = ReadProcesses();
  fs::remove(PidFile());
  fs::remove(SupervisorLockFile());
  EXPECT_THAT(Stop(), Ended(0, "But port 2435 on 127.0.43.20 (locator) is still in use"));
  const RunOutcome outcome = Host({"-u"});
  EXPECT_THAT(outcome,
              Ended(1, "files were removed, but port 2435 on 127.0.43.20 (locator) is still in use"));
  EXPECT_THAT(outcome.output, testing::Not(HasSubstr("was uninstalled")));
  ASSERT_TRUE(Running(lost.supervisor));
  EXPECT_TRUE(Running(lost.supervisor)->End(20s));
  EXPECT_TRUE(IsSilent());
}

TEST_F(SupervisedTest, PortTaken) {
  InstallAt("127.0.43.14");
  const pid_t other = Spawn({STATION_PROGRAM, "--address", "127.0.43.14", "--data", folder_.Path() / "other"},
                            -1, ProcessGroup::kOwn);
  ASSERT_TRUE(IsAnswering());
  EXPECT_THAT(Start(), Ended(1, "can't open port 2435 on 127.0.43.14"));
  EXPECT_FALSE(Running(ReadProcesses().supervisor));
  EXPECT_TRUE(IsAnswering()) << "the other one is none of ours";
  EXPECT_THAT(Stop(), Ended(0, "was not running"));
  EXPECT_TRUE(IsAnswering());
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
  EXPECT_THAT(Start(), Ended(0, "was started"));
}

TEST_F(SupervisedTest, ClosingTheCallerDoesNotEndIt) {
  InstallAt("127.0.43.16");
  // The caller's group is killed as soon as the service runs, and its pipe is closed with it.
  const fs::path held = folder_.Path() / "held";
  const RunOutcome caller =
      RunProgram({"sh", "-c", "exec 9>\"$1\"; \"$0\" -r Pallomir_Service; kill -9 0", host_, held}, 30s);
  EXPECT_THAT(caller.output, HasSubstr("was started"));
  EXPECT_TRUE(IsAnswering());
  for (const auto& identity : {ReadProcesses().supervisor, ReadProcesses().station}) {
    ASSERT_TRUE(Running(identity));
    std::vector<fs::path> open;
    std::error_code closedMeanwhile;
    for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(identity->pid) + "/fd"))
      open.push_back(fs::read_symlink(entry.path(), closedMeanwhile));
    EXPECT_THAT(open, testing::AllOf(testing::Contains("/dev/null"), testing::Not(testing::Contains(held))));
  }
}

TEST_F(SupervisedTest, FaultsAreTold) {
  const fs::path away = folder_.Path() / "away";
  fs::rename(station_, away);
  EXPECT_THAT(Host({"-i"}), Ended(1, "pallomir-station was not found"));
  EXPECT_FALSE(ReadInstallation());
  WriteProgram(station_, "#!/bin/sh\necho broken pieces\nexit 9\n");
  EXPECT_THAT(Host({"-i"}), Ended(1, "broken pieces"));
  fs::rename(away, station_);
  InstallAt("127.0.43.18");

  fs::rename(station_, away);
  EXPECT_THAT(Start(), Ended(1, "choose \"Install\" in the menu again"));
  // One that passes for a station, but does not come up.
  WriteProgram(station_, "#!/bin/sh\n[ \"$1\" = --version ] && exit 0\necho my last words\nexit 5\n");
  EXPECT_THAT(Start(), Ended(1, "exit code 5.\n  my last words\n"));
  fs::rename(away, station_);

  const std::string settings = fakes::ReadFile(SettingsFile());
  fakes::WriteFile(SettingsFile(), settings + "Colour=red\n");
  for (const RunOutcome& outcome : {Start(), Host({"-i"})}) EXPECT_THAT(outcome, Ended(1, "Colour=red"));
  fakes::WriteFile(SettingsFile(), settings);
  EXPECT_THAT(Start(), Ended(0, "was started"));
}

TEST_F(SupervisedTest, WrongArguments) {
  const std::vector<std::string> cases[] = {
      {}, {""}, {"-x"}, {"-r"}, {"-k", "Other_Service"}, {"-i", "-u"}, {"-r", "Pallomir_Service", "x"}};
  for (const auto& arguments : cases) {
    EXPECT_THAT(Host(arguments), Ended(2, "usage: ServiceName -i"));
    EXPECT_THAT(InstallLog(), HasSubstr("usage: ServiceName -i"));
  }
  EXPECT_FALSE(fs::exists(SettingsFile()));
}

TEST_F(SupervisedTest, FolderThatCantBeWritten) {
  fs::permissions(folder_.Path(), fs::perms(0755));
  fs::permissions(host_.parent_path(), fs::perms(0555));
  std::vector<std::string> command{host_.string(), "-i"};
  // Nothing is read-only to root.
  if (::geteuid() == 0) command.insert(command.begin(), {"setpriv", "--reuid=65534", "--clear-groups"});
  EXPECT_THAT(RunProgram(command, 30s), Ended(1, "can't write"));
  EXPECT_FALSE(ReadInstallation());
  fs::permissions(host_.parent_path(), fs::perms(0755));
}

}  // namespace
}  // namespace pallomir::servicehost
