#include "platform/alsa/worker_sound_player.h"

#include <alsa/asoundlib.h>
#include <gmock/gmock.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "fakes/temporary_folder.h"
#include "platform/alsa/alsa_device.h"

namespace pallomir {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Takes work from any thread and runs it in the test's.
class Posted {
 public:
  void Post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
    came_.notify_all();
  }

  template <class Condition>
  bool RunUntil(Condition condition) {
    std::unique_lock lock(mutex_);
    while (!condition()) {
      if (!came_.wait_for(lock, milliseconds(5000), [this] { return !waiting_.empty(); })) return false;
      const auto work = std::move(waiting_.front());
      waiting_.pop_front();
      lock.unlock();
      work();
      lock.lock();
    }
    return true;
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  std::deque<std::function<void()>> waiting_;
};

/// What a device of the tests does; shared with the thread that works with it.
struct DeviceScript {
  std::atomic<int> openingsLeft = 1000;  ///< until it is not there any more
  std::atomic<bool> isFull = false;      ///< it takes nothing
  std::atomic<int> loseAtWrite = -1;     ///< the write so many away finds it gone
  std::atomic<int> openings = 0;
  std::atomic<int> blockMilliseconds = 0;  ///< opening takes so long, whatever is wanted meanwhile
  std::atomic<std::size_t> bytes = 0;      ///< taken
};

class FakePcmDevice : public PcmDevice {
 public:
  explicit FakePcmDevice(std::shared_ptr<DeviceScript> script) : script_(std::move(script)) {}

  std::optional<std::string> Open(const WaveHeader&) override {
    ++script_->openings;
    std::this_thread::sleep_for(milliseconds(script_->blockMilliseconds));
    if (script_->openingsLeft-- > 0) return std::nullopt;
    return "no such device";
  }
  std::size_t BufferFrames() const override { return 100; }
  std::optional<std::size_t> Write(std::span<const char> frames) override {
    if (script_->isFull) return 0;
    if (script_->loseAtWrite-- == 0) return std::nullopt;
    const std::size_t size = std::min<std::size_t>(frames.size(), 2000);
    script_->bytes += size;
    return size / 2;
  }
  void Close() override {}

 private:
  std::shared_ptr<DeviceScript> script_;
};

std::string Samples(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    bytes += static_cast<char>(i * 7 % 251);
    bytes += static_cast<char>(i * 3 % 127);
  }
  return bytes;
}

class WorkerSoundPlayerTest : public testing::Test {
 protected:
  void Use(std::unique_ptr<PcmDevice> device) {
    player_ = std::make_unique<WorkerSoundPlayer>(
        std::move(device), [this](std::function<void()> work) { posted_.Post(std::move(work)); });
    player_->ended = [this](int number) { ended_.push_back(number); };
    player_->failed = [this](const std::string& why) { failures_.push_back(why); };
  }
  void UseFake() { Use(std::make_unique<FakePcmDevice>(script_)); }

  std::filesystem::path File() {
    const std::string data = Samples(3000);
    const auto file = folder_.Path() / "sound.wav";
    fakes::WriteFile(file, EncodeWaveHeader(44100, static_cast<std::uint32_t>(data.size())) + data);
    return file;
  }

  bool WaitForEnds(std::size_t count) {
    return posted_.RunUntil([&] { return ended_.size() >= count; });
  }

  /// The library reads this configuration from now on.
  void Configure(const std::string& text) {
    fakes::WriteFile(folder_.Path() / "asound.conf", text);
    ::setenv("ALSA_CONFIG_PATH", (folder_.Path() / "asound.conf").c_str(), 1);
    snd_config_update_free_global();
  }
  bool PlayToItsEnd(const std::filesystem::path& file) {
    const std::size_t ends = ended_.size();
    player_->Open(file);
    player_->Play(static_cast<int>(ends + 1), true);
    return WaitForEnds(ends + 1) && ended_.back() == static_cast<int>(ends + 1);
  }

  fakes::TemporaryFolder folder_;
  Posted posted_;
  std::shared_ptr<DeviceScript> script_ = std::make_shared<DeviceScript>();
  std::unique_ptr<WorkerSoundPlayer> player_;
  std::vector<int> ended_;
  std::vector<std::string> failures_;
};

TEST_F(WorkerSoundPlayerTest, TheLibraryGetsTheFileSampleForSample) {
  // Each play is written into a file of its own: "played.raw", "played.raw.0001", …
  Configure("pcm.!default { type file slave.pcm { type null } format raw truncate false file \"" +
            (folder_.Path() / "played.raw").string() + "\" }\n");
  Use(std::make_unique<AlsaDevice>());
  std::string stereo =
      EncodeWaveHeader(22050, 8).substr(0, 36);  // of 8 bits, behind a chunk that is no sound
  stereo[22] = 2;
  stereo[34] = 8;
  stereo += std::string("LIST\4\0\0\0abcd", 12) + std::string("data\x10\x27\0\0", 8);
  const struct {
    std::string head;
    std::size_t samples;
    char silence;
    const char* suffix;
  } cases[] = {{EncodeWaveHeader(44100, 2 * 60'001), 60'001, '\0', ""}, {stereo, 5000, '\x80', ".0001"}};
  for (const auto& [head, samples, silence, suffix] : cases) {
    fakes::WriteFile(folder_.Path() / "sound.wav", head + Samples(samples));
    ASSERT_TRUE(PlayToItsEnd(folder_.Path() / "sound.wav")) << testing::PrintToString(failures_);
    const std::string recorded = fakes::ReadFile(folder_.Path() / ("played.raw" + std::string(suffix)));
    ASSERT_GE(recorded.size(), 2 * samples);
    EXPECT_TRUE(recorded.starts_with(Samples(samples)));
    EXPECT_EQ(recorded.find_first_not_of(silence, 2 * samples), std::string::npos);
  }
  EXPECT_THAT(failures_, IsEmpty());
}

TEST_F(WorkerSoundPlayerTest, WhatTheLibrarySaysOfAMissingDeviceComesWithTheFailure) {
  Configure("pcm.!default { type nonsense }\n");
  Use(std::make_unique<AlsaDevice>());
  testing::internal::CaptureStderr();
  EXPECT_TRUE(PlayToItsEnd(File()));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  ASSERT_THAT(failures_, SizeIs(1));
  EXPECT_THAT(failures_[0], HasSubstr("nonsense"));
  EXPECT_EQ(failures_[0].find('\n'), std::string::npos);
}

TEST_F(WorkerSoundPlayerTest, FilesThatCannotBePlayedFailAndEndAtOnce) {
  UseFake();
  const auto pipe = folder_.Path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  fakes::WriteFile(folder_.Path() / "text.wav", "not a sound");
  const std::pair<std::filesystem::path, const char*> cases[] = {
      {"", "no sound file"},
      {folder_.Path() / "missing.wav", "No such file"},
      {folder_.Path(), "directory"},
      {pipe, "pipe"},
      {folder_.Path() / "text.wav", "no wave file"}};
  for (const auto& [file, why] : cases) {
    ASSERT_TRUE(PlayToItsEnd(file));
    EXPECT_THAT(failures_.back(), HasSubstr(why));
  }
  EXPECT_THAT(failures_, SizeIs(std::size(cases)));
  EXPECT_EQ(script_->openings, 0);
}

TEST_F(WorkerSoundPlayerTest, ATruncatedFileIsPlayedAsFarAsItGoes) {
  UseFake();
  fakes::WriteFile(folder_.Path() / "cut.wav", EncodeWaveHeader(44100, 4'000'000'000) + Samples(500) + "x");
  EXPECT_TRUE(PlayToItsEnd(folder_.Path() / "cut.wav"));
  EXPECT_THAT(failures_, IsEmpty());
  EXPECT_EQ(script_->bytes, 1000u + 200u) << "whole samples, and a buffer of silence";
}

TEST_F(WorkerSoundPlayerTest, EachPlayWithNoticeEndsOnce) {
  script_->isFull = true;
  UseFake();
  player_->Open(File());
  player_->Play(1, true);
  while (script_->openings == 0) std::this_thread::yield();
  player_->Play(2, true);   // ends the first
  player_->Play(3, false);  // ends the second
  player_->Play(4, true);   // the third has no notice
  ASSERT_TRUE(WaitForEnds(2));
  player_->Stop();
  player_->Stop();
  ASSERT_TRUE(WaitForEnds(3));
  script_->isFull = false;
  player_->Play(5, true);
  ASSERT_TRUE(WaitForEnds(4));
  EXPECT_THAT(ended_, ElementsAre(1, 2, 4, 5));
  player_->Close();
  EXPECT_THAT(failures_, IsEmpty());
  player_->Play(6, true);
  ASSERT_TRUE(WaitForEnds(5));
  EXPECT_THAT(failures_, ElementsAre(HasSubstr("no sound file is open")));
}

TEST_F(WorkerSoundPlayerTest, ADeviceThatGoesAndComesIsTakenUpAgain) {
  UseFake();
  script_->loseAtWrite = 1;
  ASSERT_TRUE(PlayToItsEnd(File()));
  EXPECT_THAT(failures_, IsEmpty());
  EXPECT_EQ(script_->openings, 2);
  EXPECT_EQ(script_->bytes, 6000u + 200u) << "it goes on where it was";
  script_->loseAtWrite = 1;
  script_->openingsLeft = 1;
  ASSERT_TRUE(PlayToItsEnd(File()));
  EXPECT_THAT(failures_, ElementsAre("the sound device has gone"));
}

TEST_F(WorkerSoundPlayerTest, ADeviceThatBlocksKeepsNeitherACallNorTheEndWaiting) {
  script_->blockMilliseconds = 700;
  UseFake();
  const auto start = steady_clock::now();
  player_->Open(File());
  player_->Play(1, true);
  while (script_->openings == 0) std::this_thread::yield();
  player_->Play(2, true);
  player_->Stop();
  ASSERT_TRUE(WaitForEnds(2)) << "both are told while the device blocks";
  player_.reset();
  EXPECT_LT(steady_clock::now() - start, milliseconds(400));
  while (script_.use_count() > 1) std::this_thread::sleep_for(milliseconds(5));  // the thread ends by itself
}

}  // namespace
}  // namespace pallomir
