#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <csignal>

#include "host_testing.h"
#include "servicehost/bounded_log.h"
#include "servicehost/command_lock.h"
#include "servicehost/descriptor.h"
#include "servicehost/restart_policy.h"
#include "servicehost/spawn.h"
#include "servicehost/station_program.h"
#include "servicehost/unit_file.h"

namespace pallomir::servicehost {
namespace {

using namespace std::chrono_literals;

TEST(UnitFile, QuotesEveryWord) {
  const std::pair<const char*, const char*> cases[] = {
      {"/usr/bin/x", R"("/usr/bin/x")"}, {"a b", R"("a b")"},
      {"100%n", R"("100%%n")"},          {"a\\b", R"("a\\b")"},
      {"say \"x\"", R"("say \"x\"")"},   {"ü$HOME", R"("ü$HOME")"},
  };
  for (const auto& [word, quoted] : cases) EXPECT_EQ(UnitWord(word), quoted);
  // The colon keeps systemd from expanding the dollar sign.
  EXPECT_THAT(UnitText({"/a b", "--config", "/$x"}),
              testing::HasSubstr("\nExecStart=:\"/a b\" \"--config\" \"/$x\"\n"));
}

TEST(Ports, EachOneThatIsTakenIsNamed) {
  station::Options options;
  options.address = "127.0.43.2";
  EXPECT_EQ(FindTakenPort(options) + FindUsedPort(options), "");
  EXPECT_EQ(PortsText(options), "locator 127.0.43.2:2435 (UDP), Base Server 127.0.43.2:18799 and 18800");
  const std::tuple<int, int, const char*> cases[] = {{SOCK_DGRAM, 2435, "locator"},
                                                     {SOCK_STREAM, 18799, "Base Server's probe"},
                                                     {SOCK_STREAM, 18800, "Base Server's data"},
                                                     {SOCK_STREAM, 2480, "web site"}};
  for (const auto& [type, port, use] : cases) {
    const Descriptor other(::socket(AF_INET, type, 0));
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, "127.0.43.2", &place.sin_addr);
    ASSERT_EQ(::bind(other.Get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    if (type == SOCK_STREAM) ::listen(other.Get(), 1);
    const std::string number = "port " + std::to_string(port) + " on 127.0.43.2";
    EXPECT_EQ(FindTakenPort(options), "can't open " + number + " for the " + use +
                                          ": Address already in use (another station may be running)");
    EXPECT_EQ(FindUsedPort(options), number + " (" + use + ")");
  }
}

TEST(RestartPolicy, GrowsAndGivesUp) {
  RestartPolicy policy;
  for (const int delay : {1, 2, 4, 8, 16, 32, 60, 60}) EXPECT_EQ(policy.AfterFailure(0s), delay * 1s);
  EXPECT_EQ(policy.AfterFailure(3600s), 1s) << "it was well for a while";
  for (int i = 1; i < RestartPolicy::kMaxQuickFailures; ++i) EXPECT_TRUE(policy.AfterFailure(59s));
  EXPECT_FALSE(policy.AfterFailure(59s));
}

TEST(ProcessIdentity, ReadsOnlyItsOwnForm) {
  const auto self = IdentityOf(::getpid());
  ASSERT_TRUE(self);
  EXPECT_EQ(ParseIdentity(ToText(*self)), self);
  for (const char* text :
       {"", "12", "12 34", "0 34 b", "1 34 b", "-5 34 b", "12 34 b c", "x 34 b", "99999999999999 34 b"})
    EXPECT_FALSE(ParseIdentity(text)) << text;
}

TEST(ProcessIdentity, StrangerWithTheSameIdIsSafe) {
  const pid_t child = Spawn({"sleep", "60"}, -1, ProcessGroup::kOwn);
  ASSERT_GT(child, 0);
  const ProcessIdentity identity = IdentityOf(child).value();
  for (ProcessIdentity old : {ProcessIdentity{child, identity.startTicks - 1, identity.boot},
                              ProcessIdentity{child, identity.startTicks, "another boot"}})
    EXPECT_FALSE(ProcessHandle::Open(old));
  const auto handle = ProcessHandle::Open(identity);
  ASSERT_TRUE(handle);
  EXPECT_FALSE(handle->AwaitEnd(0ms));
  EXPECT_TRUE(handle->End(10s));
  EXPECT_FALSE(IdentityOf(child)) << "ended, although nobody has asked for its exit code yet";
  ::waitpid(child, nullptr, 0);
}

TEST(RunProgram, TellsHowItEnded) {
  const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
      {{"sh", "-c", "echo one; echo two >&2; exit 7"}, 7, "two"},
      {{"false"}, 1, "exit code 1"},
      {{"sh", "-c", "kill -9 $$"}, -1, "was ended by signal 9"},
      {{"sh", "-c", "sleep 60 & sleep 60"}, -1, "did not finish within 1 s"},
      {{"no-such-program-here"}, -1, "No such file or directory"},
      {{"sh", "-c", "sleep 60 & echo '$HOME \"x\"'"}, 0, "$HOME \"x\""},  // what it leaves is not awaited
  };
  for (const auto& [command, exitCode, reason] : cases) {
    const RunOutcome outcome = RunProgram(command, 1s);
    EXPECT_EQ(outcome.exitCode, exitCode) << command.back();
    EXPECT_THAT(outcome.Reason(), testing::EndsWith(reason));
  }
  EXPECT_EQ(RunProgram({"sh", "-c", "head -c 1000000 /dev/zero"}, 20s).output.size(), 16384u);
}

TEST(BoundedLog, KeepsTwoFiles) {
  const fakes::TemporaryFolder folder;
  const fs::path file = folder.Path() / "log", kept = folder.Path() / "log.1";
  BoundedLog log(file, 1000);
  for (int i = 0; i < 500; ++i)
    log.Write("line " + std::to_string(i) + std::string(i == 400 ? 100000 : 0, 'x'));
  EXPECT_LE(fs::file_size(file), 1000u + 2100);
  EXPECT_LE(fs::file_size(kept), 1000u + 2100);
  EXPECT_THAT(fakes::ReadFile(file), testing::HasSubstr("line 499\n"));
}

TEST(CommandLock, OneAtATime) {
  const fakes::TemporaryFolder folder;
  const fs::path file = folder.Path() / "made/lock";
  std::error_code error;
  auto first = CommandLock::Take(file, 0ms, error);
  ASSERT_TRUE(first);
  EXPECT_FALSE(CommandLock::Take(file, 100ms, error));
  EXPECT_EQ(error, std::errc::timed_out);
  fs::remove(file);
  EXPECT_TRUE(CommandLock::Take(file, 0ms, error)) << "a removed lock file locks nothing";
  first.reset();
  fakes::WriteFile(folder.Path() / "plain", "");
  EXPECT_FALSE(CommandLock::Take(folder.Path() / "plain/made/lock", 1h, error)) << "not waited for";
  EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST(StationProgram, LooksInOrder) {
  const fakes::TemporaryFolder folder;
  const fs::path top = folder.Path(), host = top / "app/ServiceName";
  fs::create_directories(host);
  fs::create_directories(top / "bin");
  ::setenv("PATH", ("relative:" + (top / "bin").string()).c_str(), 1);
  ::unsetenv("PALLOMIR_STATION");
  EXPECT_THAT(FindStation(host).problem, testing::HasSubstr("not found"));
  // From the last place to the first: each one found hides those before it.
  for (const char* place : {"bin/pallomir-station", "app/pallomir-station",
                            "app/pallomir-station/pallomir-station", "pallomir-station/pallomir-station"}) {
    if (place == std::string("app/pallomir-station/pallomir-station"))
      fs::remove(top / "app/pallomir-station");
    fs::create_directories((top / place).parent_path());
    fakes::WriteFile(top / place, "");
    EXPECT_NE(FindStation(host).station, top / place) << "not executable";
    WriteProgram(top / place, "#!/bin/sh\nexit 4\n");
    EXPECT_EQ(FindStation(host).station, top / place);
  }
  EXPECT_THAT(CheckStation(FindStation(host).station), testing::HasSubstr("exit code 4"));
  ::setenv("PALLOMIR_STATION", (top / "none").c_str(), 1);
  EXPECT_THAT(FindStation(host).problem, testing::HasSubstr("PALLOMIR_STATION"));
  ::unsetenv("PALLOMIR_STATION");
}

}  // namespace
}  // namespace pallomir::servicehost
