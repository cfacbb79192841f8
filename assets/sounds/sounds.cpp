#include "sounds.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <utility>

// The recipes of the sounds. Each is a function of the time in seconds; loudness and the fades at both ends
// are given to all alike, so that a recipe says no more than what makes its sound the one it is.

namespace pallomir {
namespace {

using Recipe = std::function<double(double)>;

double Tone(double hertz, double t) { return std::sin(2 * std::numbers::pi * hertz * t); }

double Decay(double seconds, double t) { return std::exp(-t / seconds); }

// The same noise at each build.
class Noise {
 public:
  double Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_ / 2147483648.0 - 1;
  }

 private:
  std::uint32_t state_ = 2463534242;
};

// A horn of two reeds that beat against each other, four strokes of it.
double Raucous(double t) {
  constexpr double kStroke = 0.55;
  const double inStroke = std::fmod(t, kStroke);
  if (inStroke > 0.45) return 0;
  const auto saw = [t](double hertz) { return 2 * std::fmod(t * hertz, 1.0) - 1; };
  const double edges = std::min({1.0, inStroke / 0.01, (0.45 - inStroke) / 0.01});
  return edges * std::clamp(1.4 * (saw(311) + saw(329)) + 0.5 * Tone(1244, t), -2.0, 2.0);
}

// C major, as if struck on a piano: the upper partials die first.
double Chord(double t) {
  double sum = 0;
  for (const double note : {261.63, 329.63, 392.0, 523.25}) {
    for (int partial = 1; partial <= 4; ++partial)
      sum += Tone(note * partial, t) * Decay(0.6 / partial, t) / (partial * partial);
  }
  return sum;
}

// A cork: the pitch falls by two octaves in a tenth of a second.
double Pop(double t) {
  constexpr double kFall = 0.03;
  const double turns = 220 * t + 660 * kFall * (1 - Decay(kFall, t));
  return Tone(turns, 1) * Decay(0.035, t);
}

// A small bell; its partials are no multiples of each other.
double Ding(double t) {
  return Tone(1318.5, t) * Decay(0.45, t) + 0.5 * Tone(1318.5 * 2.76, t) * Decay(0.2, t) +
         0.25 * Tone(1318.5 * 5.4, t) * Decay(0.08, t);
}

// Breath through the teeth: noise without its lower half, which swells and goes.
Recipe Shhh() {
  return [noise = Noise(), before = 0.0](double t) mutable {
    const double now = noise.Next();
    const double high = now - std::exchange(before, now);
    return high * std::pow(std::sin(std::numbers::pi * std::min(t / 1.1, 1.0)), 2);
  };
}

// The escapement of a clock: a click and the ring of its case.
Recipe Tick() {
  return [noise = Noise()](double t) mutable {
    return 0.6 * noise.Next() * Decay(0.0015, t) + Tone(2400, t) * Decay(0.008, t);
  };
}

// The same through a cushion.
double SoftTick(double t) { return Tone(700, t) * Decay(0.012, t); }

// Linear over so many seconds: no sound begins or ends with a click that is not its own.
void Fade(std::vector<double>& samples, double atFront, double atEnd) {
  const auto ramp = [&](double seconds, auto at) {
    const double count = seconds * kSoundRate;
    for (std::size_t i = 0; static_cast<double>(i) < count; ++i) *at++ *= static_cast<double>(i) / count;
  };
  ramp(atFront, samples.begin());
  ramp(atEnd, samples.rbegin());
}

Sound Make(std::string name, double seconds, double loudness, double fade, Recipe recipe) {
  Sound sound{std::move(name), {}};
  const auto count = static_cast<std::size_t>(seconds * kSoundRate);
  for (std::size_t i = 0; i < count; ++i)
    sound.samples.push_back(recipe(static_cast<double>(i) / kSoundRate));
  Fade(sound.samples, fade, 0.01);
  double highest = 0;
  for (const double sample : sound.samples) highest = std::max(highest, std::abs(sample));
  for (double& sample : sound.samples) sample *= loudness / highest;
  return sound;
}

}  // namespace

std::vector<Sound> MakeSounds() {
  return {
      Make("Raucous", 2.1, 0.8, 0.005, Raucous),   Make("Chord", 1.8, 0.7, 0.005, Chord),
      Make("Pop", 0.18, 0.7, 0.002, Pop),          Make("Ding", 1.4, 0.7, 0.002, Ding),
      Make("Shhh", 1.1, 0.4, 0.05, Shhh()),        Make("Tick", 0.08, 0.6, 0.0005, Tick()),
      Make("SoftTick", 0.1, 0.3, 0.002, SoftTick),
  };
}

}  // namespace pallomir
