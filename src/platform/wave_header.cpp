#include "platform/wave_header.h"

namespace pallomir {
namespace {

constexpr std::size_t kChunkHead = 8;
constexpr std::size_t kFormatSize = 16;
constexpr unsigned kPlainPcm = 1;

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
    value = value << 8 | static_cast<unsigned char>(*byte);
  return value;
}

std::string LittleEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (; bytes > 0; --bytes, value >>= 8) text += static_cast<char>(value & 0xFF);
  return text;
}

// Why the format can't be played, or nothing.
std::string TakeFormat(std::string_view chunk, WaveHeader& header) {
  if (chunk.size() < kFormatSize) return "its format is cut off";
  const std::uint32_t coding = LittleEndian(chunk.substr(0, 2));
  const std::uint32_t channels = LittleEndian(chunk.substr(2, 2));
  const std::uint32_t rate = LittleEndian(chunk.substr(4, 4));
  const std::uint32_t bits = LittleEndian(chunk.substr(14, 2));
  if (coding != kPlainPcm || (bits != 8 && bits != 16)) return "it is no PCM of 8 or 16 bits";
  if (channels < 1 || channels > 2) return "it has " + std::to_string(channels) + " channels";
  if (rate < 4000 || rate > 192000) return "it has " + std::to_string(rate) + " samples a second";
  header.channels = static_cast<int>(channels);
  header.rate = static_cast<int>(rate);
  header.bits = static_cast<int>(bits);
  return {};
}

}  // namespace

std::variant<WaveHeader, std::string> ParseWaveHeader(std::string_view head) {
  if (head.size() < 12 || !head.starts_with("RIFF") || head.substr(8, 4) != "WAVE")
    return "it is no wave file";
  WaveHeader header;
  bool hasFormat = false;
  for (std::size_t at = 12; at + kChunkHead <= head.size();) {
    const std::string_view name = head.substr(at, 4);
    const std::size_t size = LittleEndian(head.substr(at + 4, 4));
    at += kChunkHead;
    if (name == "data") {
      if (!hasFormat) return "its format is missing";
      header.dataOffset = at;
      header.dataBytes = size;
      return header;
    }
    if (name == "fmt ") {
      if (std::string why = TakeFormat(head.substr(at, size), header); !why.empty()) return why;
      hasFormat = true;
    }
    if (size > head.size() - at) break;
    at += size + size % 2;  // chunks begin at even places
  }
  return "there is no sound in it";
}

std::string EncodeWaveHeader(int rate, std::uint32_t dataBytes) {
  constexpr std::uint32_t kHeadBehindSize = 36;
  const auto samples = static_cast<std::uint32_t>(rate);
  return "RIFF" + LittleEndian(kHeadBehindSize + dataBytes, 4) + "WAVEfmt " + LittleEndian(kFormatSize, 4) +
         LittleEndian(kPlainPcm, 2) + LittleEndian(1, 2) + LittleEndian(samples, 4) +
         LittleEndian(samples * 2, 4) + LittleEndian(2, 2) + LittleEndian(16, 2) + "data" +
         LittleEndian(dataBytes, 4);
}

}  // namespace pallomir
