#include <gmock/gmock.h>

#include <cmath>
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

}  // namespace
}  // namespace pallomir
