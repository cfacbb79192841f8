#pragma once

#include <string>
#include <vector>

namespace pallomir {

/// Samples a second of all sounds.
inline constexpr int kSoundRate = 44100;

/// A sound of the alerts as it is heard: mono, each sample from -1 to 1.
struct Sound {
  std::string name;  ///< of its file, without ".wav"
  std::vector<double> samples;
};

/// All of them.
std::vector<Sound> MakeSounds();

}  // namespace pallomir
