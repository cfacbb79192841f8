#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "platform/wave_header.h"

namespace pallomir {

/// A device that takes samples, in frames of all channels. It is worked with by one thread. No call waits
/// until there is room for more.
class PcmDevice {
 public:
  virtual ~PcmDevice() = default;

  /// Opens it for sound of this form. Why it could not be opened, or nothing.
  virtual std::optional<std::string> Open(const WaveHeader& form) = 0;
  /// How many frames it holds before they are heard. Of an open device.
  virtual std::size_t BufferFrames() const = 0;
  /// Gives it whole frames; how many it took, 0 where it is full. Nothing when the device is lost.
  virtual std::optional<std::size_t> Write(std::span<const char> frames) = 0;
  /// What it holds is not heard any more. Nothing happens to a closed device.
  virtual void Close() = 0;
};

}  // namespace pallomir
