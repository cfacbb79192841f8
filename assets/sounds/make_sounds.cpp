#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "platform/wave_header.h"
#include "sounds.h"

// Writes the sounds of the alerts into the folder that is its one argument.

namespace pallomir {
namespace {

bool Write(const std::filesystem::path& file, const Sound& sound) {
  std::string data;
  for (const double sample : sound.samples) {
    const auto value = static_cast<unsigned>(std::lround(sample * 32767)) & 0xFFFF;
    data += static_cast<char>(value & 0xFF);
    data += static_cast<char>(value >> 8);
  }
  std::ofstream out(file, std::ios::binary);
  out << EncodeWaveHeader(kSoundRate, static_cast<std::uint32_t>(data.size())) << data << std::flush;
  return out.good();
}

}  // namespace
}  // namespace pallomir

int main(int argc, char** argv) {
  using namespace pallomir;
  if (argc != 2) {
    std::fprintf(stderr, "make_sounds FOLDER\n");
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  for (const Sound& sound : MakeSounds()) {
    if (Write(folder / (sound.name + ".wav"), sound)) continue;
    std::fprintf(stderr, "%s.wav can't be written\n", (folder / sound.name).c_str());
    return 1;
  }
  return 0;
}
