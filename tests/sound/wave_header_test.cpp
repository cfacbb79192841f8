#include "platform/wave_header.h"

#include <gmock/gmock.h>

namespace pallomir {
namespace {

std::string Le16(unsigned value) { return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)}; }
std::string Le32(unsigned value) { return Le16(value & 0xFFFF) + Le16(value >> 16); }

std::string Chunk(const std::string& name, const std::string& content) {
  return name + Le32(static_cast<unsigned>(content.size())) + content;
}

std::string Format(unsigned coding, unsigned channels, unsigned rate, unsigned bits) {
  return Chunk("fmt ", Le16(coding) + Le16(channels) + Le32(rate) + Le32(0) + Le16(0) + Le16(bits));
}

std::string Wave(const std::string& chunks) { return "RIFF" + Le32(0) + "WAVE" + chunks; }

TEST(WaveHeader, SaysWhatTheSoundIsAndWhereItBegins) {
  const std::string data = "data" + Le32(0xFFFFFFFF);
  const std::pair<std::string, WaveHeader> cases[] = {
      {EncodeWaveHeader(44100, 1000), {1, 44100, 16, 44, 1000}},
      {Wave(Format(1, 2, 8000, 8) + data), {2, 8000, 8, 44, 0xFFFFFFFF}},
      {Wave(Chunk("LIST", "odd") + std::string(1, '\0') + Format(1, 1, 192000, 16) + data),
       {1, 192000, 16, 56, 0xFFFFFFFF}},
  };
  for (const auto& [head, header] : cases)
    EXPECT_THAT(ParseWaveHeader(head), testing::VariantWith<WaveHeader>(header));
}

TEST(WaveHeader, WhatCannotBePlayedSaysWhy) {
  const std::string data = Chunk("data", "ab");
  const std::pair<std::string, const char*> cases[] = {
      {"", "no wave file"},
      {"RIFF\1\1\1\1WAV", "no wave file"},
      {"RIFX" + Wave("").substr(4), "no wave file"},
      {Wave(data), "format is missing"},
      {Wave(Chunk("LIST", "odd") + Format(1, 1, 44100, 16) + data), "no sound in it"},
      {Wave("fmt " + Le32(16) + "short"), "format is cut off"},
      {Wave(Format(1, 1, 44100, 16)), "no sound in it"},
      {Wave(Format(1, 1, 44100, 16) + "LIST" + Le32(0xFFFFFFFF) + data), "no sound in it"},
      {Wave(Format(3, 1, 44100, 16) + data), "no PCM"},
      {Wave(Format(1, 1, 44100, 24) + data), "no PCM"},
      {Wave(Format(1, 0, 44100, 16) + data), "0 channels"},
      {Wave(Format(1, 3, 44100, 16) + data), "3 channels"},
      {Wave(Format(1, 1, 3999, 16) + data), "3999 samples"},
      {Wave(Format(1, 1, 192001, 16) + data), "192001 samples"},
  };
  for (const auto& [head, why] : cases)
    EXPECT_THAT(ParseWaveHeader(head), testing::VariantWith<std::string>(testing::HasSubstr(why)));
}

}  // namespace
}  // namespace pallomir
