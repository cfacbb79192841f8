#include "shell/settings_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "fakes/temporary_folder.h"
#include "shell/deployment.h"

namespace pallomir {
namespace {

namespace fs = std::filesystem;
using fakes::ReadFile;
using fakes::WriteFile;

class SettingsStoreTest : public testing::Test {
 protected:
  fs::path File() const { return folder_.Path() / "pallomir" / "Registry.txt"; }
  SettingsStore Store() {
    return SettingsStore(folder_.Path(), [this](const std::string& line) { reports_.push_back(line); });
  }
  void Write(const std::string& content) {
    fs::create_directories(File().parent_path());
    WriteFile(File(), content);
  }

  fakes::TemporaryFolder folder_;
  std::vector<std::string> reports_;
};

TEST_F(SettingsStoreTest, TheFirstSaveWritesEveryKeySeenSoFarInOrder) {
  SettingsStore store = Store();
  EXPECT_EQ(store.Get("PortBase", "18801"), "18801");
  EXPECT_EQ(store.Get("PortBase", "other"), "18801") << "the first default counts";
  EXPECT_EQ(store.Get("Demo Mode", "True"), "True");
  EXPECT_FALSE(fs::exists(File()));
  EXPECT_EQ(store.Save("PortBase", "28801"), "28801");
  EXPECT_EQ(ReadFile(File()),
            "\"pallomir browser~Startup~PortBase\",\"28801\"\r\n"
            "\"pallomir browser~Startup~Demo Mode\",\"True\"\r\n");
  EXPECT_EQ(Store().Get("PortBase", ""), "28801");
}

TEST_F(SettingsStoreTest, AnyTextComesBackAsItWasSaved) {
  std::mt19937 random(9);
  std::vector<std::string> values = {
      "",     "\"",     "a\"b\"",    "\r\n",        "line\nbreak", "\\n",
      "\x01", "\x01\n", "a,b\",\"c", "Caf\xC3\xA9", "\xFF\xFE",    std::string(1, '\0')};
  for (int i = 0; i < 500; ++i) {
    std::string value(random() % 12, ' ');
    for (char& c : value) c = "\"\\\r\n\x01,rn~x\xFF"[random() % 11];
    values.push_back(value);
  }
  for (const std::string& value : values) {
    SettingsTable table;
    table.Set("key", value);
    const ParsedSettings parsed =
        ParseSettings(SettingsLine("key", value) + "\r\n" + SettingsLine("next", "1") + "\r\n");
    ASSERT_EQ(parsed.damagedLines, 0u) << value;
    ASSERT_EQ(*parsed.table.Find("key"), value);
    ASSERT_EQ(*parsed.table.Find("next"), "1");
  }
}

TEST_F(SettingsStoreTest, DamagedLinesAreReportedAndTheFileIsKeptAside) {
  const std::string damaged =
      "\"pallomir browser~Startup~PortBase\",\"28801\"\r\n"
      "\"pallomir browser~Startup~Mobile Uni\r\n"
      "garbage \xFF\x01\r\n"
      "\"a\",\"b\",\"c\"\r\n"
      "\r\n"
      "\"pallomir browser~Startup~Demo Mode\",\"False\"";
  Write(damaged);
  for (int start = 0; start < 3; ++start) {
    SettingsStore store = Store();
    EXPECT_EQ(store.Get("PortBase", ""), "28801");
    EXPECT_EQ(store.Get("Demo Mode", ""), "False");
  }
  EXPECT_THAT(reports_, testing::Contains(testing::HasSubstr("3 damaged line(s)")));
  EXPECT_EQ(ReadFile(File().string() + ".damaged1"), damaged);
  EXPECT_FALSE(fs::exists(File().string() + ".damaged2")) << "the same damage is kept once";
}

TEST_F(SettingsStoreTest, WhatCannotBeReadIsMovedAside) {
  fs::create_directories(File());
  SettingsStore store = Store();
  EXPECT_EQ(store.Get("PortBase", "18801"), "18801");
  store.Save("PortBase", "1");
  EXPECT_TRUE(fs::is_regular_file(File()));
  EXPECT_TRUE(fs::is_directory(File().string() + ".damaged1"));
  EXPECT_EQ(reports_.size(), 2u);
}

TEST_F(SettingsStoreTest, WhatCannotBeKeptAsideIsNotOverwritten) {
  Write("garbage\r\n");
  for (int number = 1; number <= 99; ++number) {
    WriteFile(File().string() + ".damaged" + std::to_string(number), "taken");
  }
  SettingsStore store = Store();
  EXPECT_EQ(store.Save("PortBase", "38801"), "38801");
  EXPECT_EQ(ReadFile(File()), "garbage\r\n");
}

TEST_F(SettingsStoreTest, AFailedSaveIsReportedAndLeavesTheOldFile) {
  Write("\"pallomir browser~Startup~PortBase\",\"28801\"\r\n");
  fs::create_directories(File().string() + ".new");
  SettingsStore store = Store();
  EXPECT_EQ(store.Save("PortBase", "38801"), "38801");
  EXPECT_EQ(store.Get("PortBase", ""), "38801");
  EXPECT_THAT(reports_, testing::Contains(testing::HasSubstr("settings not stored")));
  EXPECT_THAT(ReadFile(File()), testing::HasSubstr("28801"));
}

TEST(Deployment, ReadsItsTwoValuesAndComplainsOfTheRest) {
  std::vector<std::string> complaints;
  const Deployment deployment = ParseDeployment(
      "\xEF\xBB\xBF# comment\r\n WebsiteServer = station.local "
      "\r\n;x\nWebSite=10.0.0.7:8080\nWebSite=evil/path\nOther=1\n"
      "WebsiteServer\n",
      complaints);
  EXPECT_EQ(deployment.websiteServer, "station.local");
  EXPECT_EQ(deployment.webSite, "10.0.0.7:8080");
  EXPECT_EQ(complaints.size(), 4u);
  EXPECT_EQ(ParseDeployment("", complaints).webSite, "127.0.0.1:2480");
}

TEST(Deployment, AWebSiteIsAnOriginAndNothingElse) {
  const struct {
    const char* value;
    const char* webSite;  // the shipped one for what is refused
  } cases[] = {
      {"Station.Local:80", "station.local"},
      {"station.local:0080", "station.local"},
      {"[FE80::1]:8080", "[fe80::1]:8080"},
      {"[::1]", "[::1]"},
      {":80", "127.0.0.1:2480"},
      {"a:80:80", "127.0.0.1:2480"},
      {"a:", "127.0.0.1:2480"},
      {"a:65536", "127.0.0.1:2480"},
      {"a:-1", "127.0.0.1:2480"},
      {"[]", "127.0.0.1:2480"},
      {"[::1]x", "127.0.0.1:2480"},
      {"[::1", "127.0.0.1:2480"},
      {"user@a", "127.0.0.1:2480"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> complaints;
    const std::string line = std::string("WebSite=") + c.value;
    EXPECT_EQ(ParseDeployment(line, complaints).webSite, c.webSite) << c.value;
    EXPECT_EQ(complaints.size(), c.webSite == std::string("127.0.0.1:2480") ? 1u : 0u) << c.value;
  }
  std::vector<std::string> complaints;
  EXPECT_EQ(ParseDeployment("WebsiteServer=A.example:80\nWebsiteServer=::1", complaints).websiteServer,
            "::1");
  EXPECT_EQ(complaints.size(), 1u) << "the locator's port is fixed";
}

}  // namespace
}  // namespace pallomir
