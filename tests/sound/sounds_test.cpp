#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <set>

#include "fakes/temporary_folder.h"
#include "platform/wave_header.h"

// The sounds that are made for the application folder.

namespace pallomir {
namespace {

std::vector<double> Load(const std::string& name) {
  const std::string file = fakes::ReadFile(std::filesystem::path(SOUNDS_FOLDER) / (name + ".wav"));
  const auto parsed = ParseWaveHeader(file);
  EXPECT_TRUE(std::holds_alternative<WaveHeader>(parsed)) << name;
  if (!std::holds_alternative<WaveHeader>(parsed)) return {};
  EXPECT_EQ(std::get<WaveHeader>(parsed), (WaveHeader{1, 44100, 16, 44, file.size() - 44})) << name;
  std::vector<double> samples;
  for (std::size_t at = 44; at + 1 < file.size(); at += 2) {
    const auto low = static_cast<unsigned char>(file[at]);
    samples.push_back((static_cast<signed char>(file[at + 1]) * 256 + low) / 32768.0);
  }
  return samples;
}

double Highest(const std::vector<double>& samples, std::size_t from, std::size_t to) {
  double highest = 0;
  for (std::size_t i = from; i < to; ++i) highest = std::max(highest, std::abs(samples[i]));
  return highest;
}

// How strong the tone is in the first half second.
double Strength(const std::vector<double>& samples, double hertz) {
  double sine = 0;
  double cosine = 0;
  const std::size_t count = std::min<std::size_t>(samples.size(), 22050);
  for (std::size_t i = 0; i < count; ++i) {
    const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / 44100;
    sine += samples[i] * std::sin(angle);
    cosine += samples[i] * std::cos(angle);
  }
  return std::hypot(sine, cosine) / static_cast<double>(count);
}

TEST(Sounds, AreAudibleNotClippedFadedAndAllDifferent) {
  const struct {
    const char* name;
    double shortest, longest;  // seconds
    double loudest;
  } cases[] = {{"Raucous", 1, 3, 0.95},      {"Chord", 1, 3, 0.95}, {"Pop", 0.05, 0.3, 0.95},
               {"Ding", 0.5, 2, 0.95},       {"Shhh", 0.5, 2, 0.5}, {"Tick", 0.02, 0.15, 0.95},
               {"SoftTick", 0.02, 0.15, 0.4}};
  std::set<std::vector<double>> all;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const auto samples = Load(row.name);
    const double seconds = static_cast<double>(samples.size()) / 44100;
    EXPECT_GE(seconds, row.shortest);
    EXPECT_LE(seconds, row.longest);
    const double highest = Highest(samples, 0, samples.size());
    EXPECT_GE(highest, 0.25);
    EXPECT_LE(highest, row.loudest);
    ASSERT_GT(samples.size(), 1000u);
    EXPECT_EQ(samples.front(), 0);
    EXPECT_EQ(samples.back(), 0);
    EXPECT_LE(Highest(samples, samples.size() - 40, samples.size()), 0.1) << "no click at the end";
    EXPECT_TRUE(all.insert(samples).second);
  }
}

TEST(Sounds, AreWhatTheirNamesSay) {
  const auto chord = Load("Chord");
  for (const double note : {261.63, 329.63, 392.0})
    EXPECT_GT(Strength(chord, note), 10 * Strength(chord, note * 1.0595)) << note;
  const auto ding = Load("Ding");
  EXPECT_GT(Strength(ding, 1318.5), 10 * Strength(ding, 659.25));
  EXPECT_GT(Highest(ding, 0, 4410), 4 * Highest(ding, 50000, 54410)) << "it rings out";
  const auto crossings = [](const std::vector<double>& samples) {
    std::size_t count = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) count += samples[i - 1] * samples[i] < 0;
    return static_cast<double>(count) / static_cast<double>(samples.size());
  };
  EXPECT_GT(crossings(Load("Shhh")), 0.5) << "noise of high tones";
  EXPECT_LT(crossings(Load("Pop")), 0.1);
  const auto energy = [](const std::vector<double>& samples) {
    double sum = 0;
    for (const double sample : samples) sum += sample * sample;
    return sum / static_cast<double>(samples.size());
  };
  EXPECT_GT(energy(Load("Raucous")), 2 * energy(chord));
  EXPECT_GT(Strength(Load("Tick"), 2400), 5 * Strength(Load("SoftTick"), 2400));
}

}  // namespace
}  // namespace pallomir
