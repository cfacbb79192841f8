#pragma once

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "fakes/temporary_folder.h"
#include "servicehost/installation.h"
#include "servicehost/listening.h"
#include "servicehost/pid_file.h"
#include "servicehost/run_program.h"

namespace pallomir::servicehost {

namespace fs = std::filesystem;

inline void WriteProgram(const fs::path& file, const std::string& script) {
  fakes::WriteFile(file, script);
  fs::permissions(file, fs::perms::owner_all | fs::perms::group_exec | fs::perms::group_read |
                            fs::perms::others_exec | fs::perms::others_read);
}

/// The application folder and the station, copied to names that are hard to quote, with a home and a PATH of
/// the test's own. systemd does not answer unless a test brings one.
class HostTest : public testing::Test {
 protected:
  HostTest() {
    const fs::path& top = folder_.Path();
    for (const char* name : {"app 1 ü %n $x/ServiceName", "pallomir-station", "home ä b", "bin"})
      fs::create_directories(top / name);
    host_ = top / "app 1 ü %n $x/ServiceName/ServiceName";
    station_ = top / "pallomir-station/pallomir-station";
    fs::copy_file(HOST_PROGRAM, host_);
    fs::copy_file(STATION_PROGRAM, station_);
    fs::copy_file(fs::path(STATION_PROGRAM).parent_path() / "station.ini",
                  station_.parent_path() / "station.ini");
    WriteProgram(top / "bin/systemctl", "#!/bin/sh\necho no systemd here\nexit 1\n");
    WriteProgram(top / "bin/loginctl", "#!/bin/sh\nexit 1\n");
    WriteProgram(top / "bin/journalctl", "#!/bin/sh\necho words from the journal\n");
    ::setenv("PATH", (top.string() + "/bin:/usr/bin:/bin").c_str(), 1);
    ::setenv("HOME", (top / "home ä b").c_str(), 1);
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "PALLOMIR_STATION"}) ::unsetenv(name);
  }

  ~HostTest() override {
    const ServiceProcesses processes = ReadProcesses();
    for (const auto& identity : {processes.supervisor, processes.station})
      if (const auto process = Running(identity)) process->End(std::chrono::seconds(10));
  }

  // Its transcript is in `output`.
  RunOutcome Host(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), host_.string());
    return RunProgram(arguments, std::chrono::seconds(90));
  }
  RunOutcome Start() { return Host({"-r", "Pallomir_Service"}); }
  RunOutcome Stop() { return Host({"-k", "Pallomir_Service"}); }

  // Every test listens on an address of its own, so that they can run at the same time.
  void InstallAt(const std::string& address) {
    ASSERT_EQ(Host({"-i"}).exitCode, 0);
    std::string settings = fakes::ReadFile(SettingsFile());
    const auto at = settings.find("Address=127.0.0.1");
    ASSERT_NE(at, settings.npos);
    fakes::WriteFile(SettingsFile(), settings.replace(at, 17, "Address=" + address));
    options_.address = address;
  }

  bool IsAnswering() { return AwaitAnswers(options_, std::chrono::seconds(15)); }
  bool IsSilent() { return FindTakenPort(options_).empty(); }

  std::string InstallLog() { return fakes::ReadFile(host_.parent_path() / "ServiceName.InstallLog"); }

  fakes::TemporaryFolder folder_;
  fs::path host_, station_;
  station::Options options_;
};

MATCHER_P2(Ended, exitCode, words, "") {
  *result_listener << "exit code " << arg.exitCode << " " << arg.problem << "\n" << arg.output;
  return arg.exitCode == exitCode && arg.output.find(words) != std::string::npos;
}

}  // namespace pallomir::servicehost
