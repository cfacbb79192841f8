#include "host_testing.h"
#include "servicehost/spawn.h"

namespace pallomir::servicehost {
namespace {

using testing::HasSubstr;
using testing::Not;

// Runs the station as systemd would, and writes down what it was told. What it does not do is named in
// "refuse".
constexpr char kSystemctl[] = R"script(#!/bin/sh
here=$(dirname "$0")
echo "$*" >>"$here/calls"
while [ "${1#--}" != "$1" ]; do shift; done
grep -qsx "$1" "$here/refuse" && { echo "$1 is refused"; exit 1; }
runs() { [ -e "$here/pid" ] && kill -0 "$(cat "$here/pid")" 2>/dev/null; }
case "$1" in
  start)
    cp "$XDG_CONFIG_HOME/systemd/user/$2" "$here/started" || exit 5
    grep -qsx crash "$here/refuse" && exit 0
    "$FAKE_STATION" --config "$XDG_DATA_HOME/pallomir-station/station.ini" >/dev/null 2>&1 &
    echo $! >"$here/pid" ;;
  stop) runs && kill "$(cat "$here/pid")"; while runs; do sleep 0.02; done; rm -f "$here/pid" ;;
  show) if runs; then echo ActiveState=active; else echo ActiveState=inactive; fi; echo NRestarts=0 ;;
esac
exit 0
)script";

class SystemdTest : public HostTest {
 protected:
  SystemdTest() {
    ::setenv("XDG_DATA_HOME", (folder_.Path() / "data é").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder_.Path() / "config %h").c_str(), 1);
    ::setenv("FAKE_STATION", station_.c_str(), 1);
    BringSystemd();
    WriteProgram(Bin() / "loginctl", "#!/bin/sh\necho \"loginctl $*\" >>\"$(dirname \"$0\")/calls\"\n");
  }
  ~SystemdTest() override {
    BringSystemd();
    Refuse("");
    RunProgram({"systemctl", "stop"}, std::chrono::seconds(20));
  }

  fs::path Bin() const { return folder_.Path() / "bin"; }
  fs::path Unit() const { return folder_.Path() / "config %h/systemd/user/Pallomir_Service.service"; }
  void BringSystemd() { WriteProgram(Bin() / "systemctl", kSystemctl); }
  void Refuse(const std::string& what) { fakes::WriteFile(Bin() / "refuse", what + "\n"); }
  std::string TakeCalls() {
    const std::string calls = fakes::ReadFile(Bin() / "calls");
    fs::remove(Bin() / "calls");
    return calls;
  }
};

TEST_F(SystemdTest, FromInstallToUninstall) {
  InstallAt("127.0.43.31");
  EXPECT_THAT(InstallLog(), HasSubstr("lingering was granted"));
  EXPECT_THAT(TakeCalls(),
              testing::AllOf(HasSubstr("daemon-reload\n"), HasSubstr("enable Pallomir_Service.service\n"),
                             HasSubstr("loginctl --no-ask-password enable-linger\n")));
  EXPECT_THAT(fakes::ReadFile(Unit()), HasSubstr("ExecStart=:\"" + station_.string() + "\" \"--config\" \"" +
                                                 SettingsFile().string()));
  EXPECT_THAT(Host({"-i"}), Ended(0, "installed before"));

  EXPECT_THAT(Start(), Ended(0, "started by systemd"));
  EXPECT_TRUE(IsAnswering());
  TakeCalls();
  EXPECT_THAT(Start(), Ended(0, "already running"));
  EXPECT_THAT(TakeCalls(), Not(HasSubstr(" start ")));
  EXPECT_THAT(Stop(), Ended(0, "was stopped"));
  EXPECT_TRUE(IsSilent());
  EXPECT_THAT(Stop(), Ended(0, "was not running"));

  ASSERT_EQ(Start().exitCode, 0);
  TakeCalls();
  EXPECT_THAT(Host({"-u"}), Ended(0, "disable-linger"));
  EXPECT_THAT(TakeCalls(), testing::AllOf(HasSubstr("disable Pallomir_Service.service\n"),
                                          Not(HasSubstr("disable-linger"))))
      << "others may need it";
  EXPECT_TRUE(IsSilent());
  EXPECT_FALSE(fs::exists(Unit()));
  EXPECT_FALSE(ReadInstallation());
}

TEST_F(SystemdTest, RefusalsAreTold) {
  WriteProgram(Bin() / "loginctl", "#!/bin/sh\necho Access denied >&2\nexit 1\n");
  Refuse("enable");
  EXPECT_THAT(Host({"-i"}), Ended(1, "enable is refused"));
  EXPECT_FALSE(fs::exists(Unit()));
  EXPECT_FALSE(ReadInstallation());
  Refuse("");
  InstallAt("127.0.43.32");
  EXPECT_THAT(InstallLog(), HasSubstr("lingering was not granted (Access denied)"));

  Refuse("start");
  EXPECT_THAT(Start(), Ended(1, "start is refused"));
  Refuse("crash");
  TakeCalls();
  EXPECT_THAT(Start(), Ended(1, "words from the journal"));
  EXPECT_THAT(TakeCalls(), HasSubstr(" stop ")) << "a failed start leaves nothing that is tried again";
  Refuse("");
  const pid_t other = Spawn({STATION_PROGRAM, "--address", "127.0.43.32", "--data", folder_.Path() / "o"}, -1,
                            ProcessGroup::kOwn);
  EXPECT_TRUE(IsAnswering());
  EXPECT_THAT(Start(), Ended(1, "can't open port 2435"));
  EXPECT_TRUE(ProcessHandle::Open(IdentityOf(other).value())->End(std::chrono::seconds(10)));
  ASSERT_EQ(Start().exitCode, 0);
  Refuse("stop");
  EXPECT_THAT(Stop(), Ended(1, "stop is refused"));
  EXPECT_THAT(Host({"-u"}), Ended(1, "It stays installed"));
  EXPECT_TRUE(ReadInstallation());
  Refuse("");
}

TEST_F(SystemdTest, FollowsTheLinkToTheStation) {
  const fs::path link = folder_.Path() / "bin/pallomir-station";
  fs::create_symlink(station_, link);
  ::setenv("PALLOMIR_STATION", link.c_str(), 1);
  fs::remove(station_.parent_path() / "station.ini");  // it need not be there
  EXPECT_THAT(Host({"-i"}), Ended(0, link.string()));
  EXPECT_THAT(fakes::ReadFile(SettingsFile()),
              HasSubstr("\nData=" + (folder_.Path() / "data é/pallomir/Data").string() + "\nDemo=off\n"));
  fakes::WriteFile(station_.parent_path() / "station.ini", "WebPort=4711\n Demo = on\nData = own\n");
  fs::remove(SettingsFile());
  EXPECT_THAT(Host({"-i"}), Ended(0, ":4711/fullscreen/index.php\n"));
  EXPECT_THAT(fakes::ReadFile(SettingsFile()),
              HasSubstr("\nDemo=off\nData=" + (station_.parent_path() / "own").string() + "\n"));
}

TEST_F(SystemdTest, ThatIsGoneLater) {
  InstallAt("127.0.43.33");
  WriteProgram(Bin() / "systemctl", "#!/bin/sh\necho no bus\nexit 1\n");
  EXPECT_THAT(Host({"-i"}), Ended(1, "systemd does not answer now"));
  EXPECT_THAT(Start(), Ended(1, "no bus"));
  EXPECT_THAT(Stop(), Ended(1, "no bus"));
  EXPECT_THAT(Host({"-u"}), Ended(1, "could not be stopped"));
  EXPECT_FALSE(fs::exists(Unit()));
  EXPECT_FALSE(ReadInstallation());
  EXPECT_THAT(Host({"-i"}), Ended(0, "background process"));
  ASSERT_EQ(Host({"-i"}).exitCode, 0);
  options_.address = "127.0.43.33";
  ASSERT_EQ(Start().exitCode, 0);

  // It comes back: what runs in the background would hold the ports.
  BringSystemd();
  EXPECT_THAT(Host({"-i"}), Ended(0, "systemd service"));
  EXPECT_TRUE(IsSilent());
}

TEST_F(SystemdTest, ThatHangsEndsTheCommandAllTheSame) {
  WriteProgram(Bin() / "systemctl", "#!/bin/sh\nsleep 300\n");
  EXPECT_THAT(Host({"-i"}), Ended(0, "background process"));
}

}  // namespace
}  // namespace pallomir::servicehost
