#include "platform/alsa/alsa_device.h"

#include <alsa/asoundlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace pallomir {
namespace {

constexpr unsigned kLatencyMicroseconds = 100'000;

// What the library says on this thread while it works; of itself it would write that to the standard error
// output, a line for each of its layers.
thread_local std::string spoken;

void Listen(const char*, int, const char* function, int error, const char* format, ...) {
  constexpr std::size_t kMost = 400;
  if (spoken.size() >= kMost) return;
  char text[200];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  if (!spoken.empty()) spoken += "; ";
  spoken += std::string(function) + ": " + text;
  if (error != 0) spoken += std::string(": ") + snd_strerror(error);
  std::replace(spoken.begin(), spoken.end(), '\n', ' ');
}

}  // namespace

AlsaDevice::AlsaDevice(std::string name) : name_(std::move(name)) { snd_lib_error_set_handler(&Listen); }

AlsaDevice::~AlsaDevice() { Close(); }

std::optional<std::string> AlsaDevice::Open(const WaveHeader& form) {
  Close();
  spoken.clear();
  int error = snd_pcm_open(&pcm_, name_.c_str(), SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
  if (error < 0) pcm_ = nullptr;
  constexpr int kMayResample = 1;
  if (error >= 0) {
    error = snd_pcm_set_params(pcm_, form.bits == 8 ? SND_PCM_FORMAT_U8 : SND_PCM_FORMAT_S16_LE,
                               SND_PCM_ACCESS_RW_INTERLEAVED, static_cast<unsigned>(form.channels),
                               static_cast<unsigned>(form.rate), kMayResample, kLatencyMicroseconds);
  }
  snd_pcm_uframes_t buffer = 0;
  snd_pcm_uframes_t period = 0;
  if (error >= 0) error = snd_pcm_get_params(pcm_, &buffer, &period);
  if (error < 0) {
    Close();
    return name_ + ": " + snd_strerror(error) + (spoken.empty() ? "" : " (" + spoken + ")");
  }
  bufferFrames_ = buffer;
  frameBytes_ = form.FrameBytes();
  return std::nullopt;
}

std::optional<std::size_t> AlsaDevice::Write(std::span<const char> frames) {
  if (!pcm_) return std::nullopt;
  const snd_pcm_sframes_t written = snd_pcm_writei(pcm_, frames.data(), frames.size() / frameBytes_);
  if (written >= 0) return static_cast<std::size_t>(written);
  if (written == -EAGAIN || Recover(written)) return 0;
  return std::nullopt;
}

// After an underrun, and when the computer has slept, the device takes samples again.
bool AlsaDevice::Recover(long error) {
  if (error == -ESTRPIPE) {
    const int resumed = snd_pcm_resume(pcm_);
    if (resumed == 0 || resumed == -EAGAIN) return true;
  }
  return (error == -EPIPE || error == -ESTRPIPE) && snd_pcm_prepare(pcm_) == 0;
}

void AlsaDevice::Close() {
  if (!pcm_) return;
  snd_pcm_drop(pcm_);
  snd_pcm_close(std::exchange(pcm_, nullptr));
}

}  // namespace pallomir
