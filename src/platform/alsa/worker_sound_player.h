#pragma once

#include <functional>
#include <memory>
#include <thread>

#include "platform/alsa/pcm_device.h"
#include "platform/sound_player.h"

namespace pallomir {

/// Plays on a thread of its own, so that neither a slow file nor a slow device keeps anybody waiting.
class WorkerSoundPlayer : public SoundPlayer {
 public:
  /// `post` runs work from the event loop; it may be called from any thread until this object has gone. The
  /// object itself lives where the event loop does.
  WorkerSoundPlayer(std::unique_ptr<PcmDevice> device, std::function<void(std::function<void()>)> post);
  /// Takes at most a tenth of a second: a thread that its device keeps longer is left to itself.
  ~WorkerSoundPlayer() override;

  void Open(const std::filesystem::path& file) override;
  void Play(int number, bool withNotice) override;
  void Stop() override;
  void Close() override;

 private:
  struct Desk;

  std::shared_ptr<Desk> desk_;  // what the two threads share
  std::filesystem::path file_;
  std::thread thread_;  // from the first play on
};

}  // namespace pallomir
