#include "settings/settings_store.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/temporary_folder.h"

namespace pallomir {
namespace {

namespace fs = std::filesystem;
using fakes::ReadFile;
using fakes::WriteFile;

class SettingsStoreTest : public testing::Test {
 protected:
  fs::path File() const { return folder_.Path() / "pallomir" / "Registry.txt"; }
  std::unique_ptr<SettingsStore> Store() {
    return std::make_unique<SettingsStore>(
        folder_.Path(), loop_, [this](const std::string& line) { reports_.push_back(line); },
        [this](const std::string& sentence) { told_.push_back(sentence); });
  }
  std::string Stored(const char* key) { return Store()->Get(key, "none"); }
  void Write(const std::string& content) {
    fs::create_directories(File().parent_path());
    WriteFile(File(), content);
  }

  fakes::TemporaryFolder folder_;
  fakes::FakeEventLoop loop_;
  std::vector<std::string> reports_;
  std::vector<std::string> told_;
};

TEST_F(SettingsStoreTest, TheFirstWriteHoldsEveryKeySeenSoFarInOrder) {
  const auto store = Store();
  EXPECT_EQ(store->Get("PortBase", "18801"), "18801");
  EXPECT_EQ(store->Get("PortBase", "other"), "18801") << "the first default counts";
  EXPECT_EQ(store->Get("Demo Mode", "True"), "True");
  store->Flush();
  EXPECT_FALSE(fs::exists(File()));
  store->Save("PortBase", "28801");
  EXPECT_EQ(store->Flush(), std::nullopt);
  EXPECT_EQ(ReadFile(File()),
            "\"pallomir browser~Startup~PortBase\",\"28801\"\r\n"
            "\"pallomir browser~Startup~Demo Mode\",\"True\"\r\n");
}

TEST_F(SettingsStoreTest, WhatIsSavedInOneGoIsWrittenInOne) {
  const auto store = Store();
  store->Save("a", "1");
  store->Save("b", "2");
  EXPECT_FALSE(fs::exists(File())) << "not before the loop is free";
  loop_.Advance(0);
  EXPECT_EQ(Stored("a") + Stored("b"), "12");
  fs::remove(File());
  store->Save("b", "2");
  loop_.Advance(60'000);
  EXPECT_FALSE(fs::exists(File())) << "nothing new, nothing written";
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
    const auto store = Store();
    EXPECT_EQ(store->Get("PortBase", ""), "28801");
    EXPECT_EQ(store->Get("Demo Mode", ""), "False");
  }
  EXPECT_THAT(reports_, testing::Contains(testing::HasSubstr("3 damaged line(s)")));
  EXPECT_EQ(ReadFile(File().string() + ".damaged1"), damaged);
  EXPECT_FALSE(fs::exists(File().string() + ".damaged2")) << "the same damage is kept once";
}

TEST_F(SettingsStoreTest, WhatIsNoFileIsMovedAside) {
  fs::create_directories(File());
  const auto store = Store();
  EXPECT_EQ(store->Get("PortBase", "18801"), "18801");
  store->Save("PortBase", "1");
  store->Flush();
  EXPECT_TRUE(fs::is_regular_file(File()) && fs::is_directory(File().string() + ".damaged1"));
}

TEST_F(SettingsStoreTest, AFileThatCanNotBeReadNowIsLeftAloneInThisRun) {
  const std::string whole = "\"pallomir browser~Startup~PortBase\",\"28801\"\r\n";
  Write(whole);
  const auto store = Store();
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit none = before;
  none.rlim_cur = 0;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);  // too many open files
  const std::string read = store->Get("PortBase", "18801");
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(read, "18801");
  ASSERT_THAT(told_, testing::SizeIs(1));
  EXPECT_THAT(told_[0], testing::AllOf(testing::HasSubstr(File().string()), testing::HasSubstr("Too many")));
  store->Save("PortBase", "38801");
  EXPECT_EQ(store->Flush(), std::nullopt) << "it has been said";
  EXPECT_EQ(ReadFile(File()), whole);
}

TEST_F(SettingsStoreTest, WhatCannotBeKeptAsideIsNotOverwritten) {
  Write("garbage\r\n");
  for (int number = 1; number <= 99; ++number) {
    WriteFile(File().string() + ".damaged" + std::to_string(number), "taken");
  }
  const auto store = Store();
  EXPECT_EQ(store->Save("PortBase", "38801"), "38801");
  store->Flush();
  EXPECT_EQ(ReadFile(File()), "garbage\r\n");
  EXPECT_THAT(told_, testing::SizeIs(1));
}

TEST_F(SettingsStoreTest, AFailedWriteIsToldOnceAndTriedUntilItSucceeds) {
  const fs::path obstacle = File().string() + ".new";
  Write("\"pallomir browser~Startup~PortBase\",\"28801\"\r\n");
  fs::create_directories(obstacle);
  const auto store = Store();
  store->Save("PortBase", "38801");
  loop_.Advance(0);
  store->Save("Demo Mode", "False");
  loop_.Advance(3 * SettingsStore::kRetryMilliseconds);
  EXPECT_THAT(told_, testing::ElementsAre(testing::HasSubstr("could not be stored")));
  EXPECT_EQ(Stored("PortBase"), "28801") << "the old file is whole";
  EXPECT_TRUE(store->Flush()) << "who asks is told each time";
  store->Save("Demo Mode", "True");
  loop_.Advance(0);
  fs::remove(obstacle);
  loop_.Advance(SettingsStore::kRetryMilliseconds);
  EXPECT_EQ(Stored("PortBase"), "38801");
  fs::create_directories(obstacle);
  store->Save("PortBase", "48801");
  loop_.Advance(0);
  EXPECT_THAT(told_, testing::SizeIs(2)) << "a new trouble";
}

}  // namespace
}  // namespace pallomir
