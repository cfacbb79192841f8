#pragma once

#include "platform/alsa/pcm_device.h"

// The library's own handle.
typedef struct _snd_pcm snd_pcm_t;  // NOLINT(bugprone-reserved-identifier): its name there

namespace pallomir {

/// A playback device of ALSA, with 100 ms of buffer. The sound servers of desktops are reached through the
/// library's configuration, which names what "default" is.
class AlsaDevice : public PcmDevice {
 public:
  explicit AlsaDevice(std::string name = "default");
  ~AlsaDevice() override;
  AlsaDevice(const AlsaDevice&) = delete;
  AlsaDevice& operator=(const AlsaDevice&) = delete;

  std::optional<std::string> Open(const WaveHeader& form) override;
  std::size_t BufferFrames() const override { return bufferFrames_; }
  std::optional<std::size_t> Write(std::span<const char> frames) override;
  void Close() override;

 private:
  bool Recover(long error);

  std::string name_;
  snd_pcm_t* pcm_ = nullptr;
  std::size_t bufferFrames_ = 0;
  std::size_t frameBytes_ = 1;
};

}  // namespace pallomir
