#include "hotspots/hotspot_lists.h"

#include <gmock/gmock.h>

#include "settings/choice_table.h"

namespace pallomir {
namespace {

using testing::ElementsAre;

TEST(HotspotLists, ReadWhatStandsBeforeTheFirstFault) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"", {}},
      {choice::kHotspots.initial.data(), {"default", "wireless", "linksys", "netgear"}},
      {"09Caf\u00E9 \u2615", {"Caf\u00E9 \u2615"}},
      {"0009 04 0~\"12", {"", " 04 0~\"12"}},
      {"04home4car", {"home"}},
      {"04home-3car03bus", {"home"}},
      {"04home 3car", {"home"}},
      {"04homeXXcar", {"home"}},
      {"04home05work", {"home"}},
      {"04home0", {"home"}},
  };
  for (const auto& [stored, ssids] : cases) EXPECT_EQ(ParseHotspots(stored), ssids) << stored;
}

TEST(HotspotLists, ReadSecureEntriesOfTwoParts) {
  const std::pair<const char*, std::vector<SecureHotspot>> cases[] = {
      {"04home08WPA2~abc", {{"home", "WPA2", "abc"}}},
      {"04home04WEP~03car07WPA~a~b", {{"home", "WEP", ""}, {"car", "WPA", "a~b"}}},
      {"04home05WPA2~", {{"home", "WPA2", ""}}},
      {"04home01~", {{"home", "", ""}}},
      {"04home04none", {{"home", "none", ""}}},
      {"04home08WPA2~abc03car", {{"home", "WPA2", "abc"}}},
      {"04home08WPA2~abc03car09WPA2~abc", {{"home", "WPA2", "abc"}}},
  };
  for (const auto& [stored, hotspots] : cases) EXPECT_EQ(ParseSecureHotspots(stored), hotspots) << stored;
}

TEST(HotspotLists, WhatIsWrittenIsReadBack) {
  const std::vector<std::string> ssids{"default", std::string(32, 'x'), "Caf\u00E9 \u2615", "12\"34", "a~b"};
  EXPECT_EQ(ParseHotspots(EncodeHotspots(ssids)), ssids);
  const std::vector<SecureHotspot> hotspots{
      {"home", "WPA2-E", std::string(64, '~')}, {std::string(32, '0'), "WEP", ""}, {"\u2615", "", "k"}};
  EXPECT_EQ(ParseSecureHotspots(EncodeSecureHotspots(hotspots)), hotspots);
  // What two digits can't tell is cut between two characters, and the entries behind it are unharmed.
  const auto cut = ParseHotspots(EncodeHotspots({std::string(98, 'x') + "\u00E9", "next"}));
  EXPECT_THAT(cut, ElementsAre(std::string(98, 'x'), "next"));
}

}  // namespace
}  // namespace pallomir
