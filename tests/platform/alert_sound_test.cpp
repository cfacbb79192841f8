#include <alsa/asoundlib.h>
#include <gmock/gmock.h>
#include <stdlib.h>

#include <QElapsedTimer>

#include "alerts/alert_signal.h"
#include "fakes/fake_alerts.h"
#include "fakes/fake_system.h"
#include "fakes/temporary_folder.h"
#include "platform/alsa/alsa_device.h"
#include "platform/alsa/worker_sound_player.h"
#include "platform/qt/qt_event_loop.h"
#include "wait.h"

namespace pallomir {
namespace {

// The real player on the real event loop. The library writes each play into a file of its own, at once: so it
// is the second that is waited for, not the sound.
TEST(AlertSoundTest, APersistentAlertIsPlayedEachSecond) {
  const fakes::TemporaryFolder folder;
  const auto file = [&](int play) {
    return folder.Path() / ("played.raw" + (play > 0 ? ".000" + std::to_string(play) : ""));
  };
  fakes::WriteFile(folder.Path() / "asound.conf",
                   "pcm.!default { type file slave.pcm { type null } format raw truncate false file \"" +
                       file(0).string() + "\" }\n");
  ::setenv("ALSA_CONFIG_PATH", (folder.Path() / "asound.conf").c_str(), 1);
  snd_config_update_free_global();
  const std::string samples = "up and down";
  fakes::WriteFile(folder.Path() / "Ding.wav", EncodeWaveHeader(44100, 10) + samples.substr(0, 10));

  fakes::FakeSettings settings;
  StoredChoices choices(
      settings, [](const std::string&) {}, [](const std::string&) {});
  choices.alerts.enabled.Store(2);
  QtEventLoop loop;
  WorkerSoundPlayer player(std::make_unique<AlsaDevice>(), [&](auto work) { loop.Post(std::move(work)); });
  fakes::FakeAlertView view;
  std::string traced;
  Trace trace([] { return 0.0; }, [&](const std::string& line) { traced += line; });
  AlertSignal signal(view, player, loop, trace, choices.alerts, folder.Path());
  QElapsedTimer clock;
  clock.start();
  signal.Start();
  ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(file(2)); }, 10'000)) << traced;
  EXPECT_GE(clock.elapsed(), 1900);
  view.Close();
  LetPass(1200);
  EXPECT_FALSE(std::filesystem::exists(file(3)));
  EXPECT_TRUE(fakes::ReadFile(file(2)).starts_with(samples.substr(0, 10)));
  EXPECT_EQ(traced, "");
}

}  // namespace
}  // namespace pallomir
