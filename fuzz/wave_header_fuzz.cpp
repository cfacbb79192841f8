#include "fuzz_input.h"
#include "platform/wave_header.h"

// The beginning of a sound file: whatever it is, what is told of its sound lies within it and can be played.
//
// Flags: -max_len=256

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const auto parsed = ParseWaveHeader(AsText({data, size}));
  const auto* header = std::get_if<WaveHeader>(&parsed);
  if (!header) {
    PALLOMIR_DEMAND(!std::get<std::string>(parsed).empty());
    return 0;
  }
  PALLOMIR_DEMAND(header->dataOffset >= 44 && header->dataOffset <= size);
  PALLOMIR_DEMAND(header->FrameBytes() >= 1 && header->FrameBytes() <= 4);
  const auto bytes = static_cast<std::uint32_t>(header->dataBytes);
  const auto again = ParseWaveHeader(EncodeWaveHeader(header->rate, bytes));
  PALLOMIR_DEMAND(std::get<WaveHeader>(again) == (WaveHeader{1, header->rate, 16, 44, bytes}));
  return 0;
}
