#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace pallomir {

/// What the beginning of a wave file says of its sound: plain PCM, 8 or 16 bits a sample.
struct WaveHeader {
  int channels = 1;  ///< 1 or 2
  int rate = 44100;  ///< samples a second, 4000..192000
  int bits = 16;     ///< 8 (unsigned) or 16 (signed, little-endian)
  std::size_t dataOffset = 0;
  std::size_t dataBytes = 0;  ///< as the file claims; it may end before

  std::size_t FrameBytes() const { return static_cast<std::size_t>(channels * bits / 8); }
  bool operator==(const WaveHeader&) const = default;
};

/// The sound's data have to begin within so many bytes.
inline constexpr std::size_t kWaveHeadSize = std::size_t{16} * 1024;

/// Reads the beginning of a wave file, as much of it as there is, at most `kWaveHeadSize` bytes. The header,
/// or why it is none.
std::variant<WaveHeader, std::string> ParseWaveHeader(std::string_view head);

/// The 44 bytes that a file of mono 16-bit samples begins with.
std::string EncodeWaveHeader(int rate, std::uint32_t dataBytes);

}  // namespace pallomir
