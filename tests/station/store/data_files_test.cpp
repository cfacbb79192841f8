#include "station/store/data_files.h"

#include <fstream>

#include "base/packed_time.h"
#include "station/station_testing.h"
#include "station/store/data_folder.h"

namespace pallomir::station {
namespace {

using std::chrono::seconds;

const std::string kUnit = "00000000000A";

std::string FileOf(std::span<const WireRecord> records) {
  const Bytes bytes = EncodeDataFile(records);
  return std::string(AsText(bytes));
}

TEST(DataFile, LaysARecordOut) {
  const WireRecord record{0x6AB8C1A5, -2, 0x01020304, 0xABCD};
  const Bytes expected = {0x6A, 0xB8, 0xC1, 0xA5, 0xAB, 0xFF, 0xFF, 0xFF, 0xFE, 1, 2, 3, 4, 0xCD};
  EXPECT_EQ(EncodeDataFile(std::vector{record}), expected);
}

TEST(DataFile, KnowsWhatIsNone) {
  WireRecord impossible = RecordAt(0);
  Bytes torn = EncodeDataFile(RecordsAt(0, 3));
  torn.resize(torn.size() - 5);
  impossible.time = (impossible.time & ~(15u << 22)) | 13u << 22;  // month 13
  const std::tuple<const char*, Bytes, std::size_t> cases[] = {
      {"empty", {}, 0},
      {"a record cut short", Bytes(13, 1), 0},
      {"text", Bytes(140, 'x'), 0},
      {"too long", EncodeDataFile(RecordsAt(0, 721)), 0},
      {"descending", EncodeDataFile(std::vector{RecordAt(1), RecordAt(0)}), 0},
      {"equal times", EncodeDataFile(std::vector{RecordAt(1), RecordAt(1)}), 0},
      {"impossible date", EncodeDataFile(std::vector{impossible}), 0},
      {"torn tail", torn, 2},
  };
  for (const auto& [name, bytes, records] : cases) {
    const DataFileContent content = DecodeDataFile(bytes);
    EXPECT_EQ(content.records.size(), records) << name;
    EXPECT_NE(content.problem, "") << name;
  }
}

TEST(Descriptions, AreCutAtWholeCharacters) {
  EXPECT_EQ(CleanDescription(std::string(79, 'x') + "\xC3\xA4" + "y"), std::string(79, 'x'));
  EXPECT_EQ(CleanDescription(" ~\"\t "), "");
}

class DataFolderOnDisk : public testing::Test {
 protected:
  TemporaryFolder temporary_;
  std::vector<std::string> log_;
  std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
  DataFolder folder_{temporary_.Path(), [this](const std::string& line) { log_.push_back(line); },
                     [this] { return now_; }};
  const TimeWindow everything_{kNoon, kNoon + 300 * kDay};

  void Write(const std::string& name, std::string_view content) {
    temporary_.Write(std::filesystem::path(kUnit) / name, content);
  }
};

TEST_F(DataFolderOnDisk, ReadsAcrossFilesAndCutsTheWindow) {
  const auto records = RecordsAt(0, 1500, 10);
  const std::span all(records);
  Write("a", FileOf(all.subspan(0, 720)));
  Write("b", FileOf(all.subspan(720, 720)));
  Write("c", FileOf(all.subspan(1440)));
  EXPECT_EQ(folder_.Read(kUnit, everything_, 5000), records);
  for (const std::size_t first : {0u, 1u, 719u, 720u, 721u, 1439u, 1440u, 1499u}) {
    for (const std::size_t limit : {1u, 719u, 720u, 1500u}) {
      const auto expected = all.subspan(first, std::min(limit, all.size() - first));
      const TimeWindow window{kNoon + static_cast<Millis>(first) * 10 * kSecond - 1, everything_.until};
      const auto read = folder_.Read(kUnit, window, limit);
      EXPECT_TRUE(std::ranges::equal(read, expected)) << first << " " << limit;
    }
  }
  const TimeWindow short_{kNoon + 7200 * kSecond - 10 * kSecond, kNoon + 7200 * kSecond + 9 * kSecond};
  EXPECT_EQ(folder_.Read(kUnit, short_, 100), RecordsAt(7190, 2, 10));
}

TEST_F(DataFolderOnDisk, PassesOverForeignFilesAndNamesThem) {
  Write("1", FileOf(RecordsAt(0, 10)));
  Write("2-overlaps", FileOf(RecordsAt(5, 10)));
  Write("3-torn", FileOf(RecordsAt(20, 10)) + "torn");
  Write("4-text", "no data here");
  Write("5-long", std::string(20000, '\0'));
  std::filesystem::create_directory(temporary_.Path() / kUnit / "6-folder");
  auto expected = RecordsAt(0, 10);
  for (const WireRecord& record : RecordsAt(20, 10)) expected.push_back(record);
  EXPECT_EQ(folder_.Read(kUnit, everything_, 100), expected);
  EXPECT_EQ(log_.size(), 4u);
  folder_.Read(kUnit, everything_, 100);
  EXPECT_EQ(log_.size(), 4u) << "said once, not at every read";
}

TEST_F(DataFolderOnDisk, KnowsFoldersNamedByAnId) {
  Write("1", FileOf(RecordsAt(0, 1)));
  temporary_.Write("descriptions.txt", "");
  std::filesystem::create_directory(temporary_.Path() / "00000000000b");
  EXPECT_TRUE(folder_.Knows(kUnit));
  EXPECT_FALSE(folder_.Knows("00000000000B"));
  EXPECT_FALSE(folder_.Knows("../../../etc"));
  std::string problem;
  EXPECT_EQ(folder_.Units(problem).size(), 1u);
  EXPECT_EQ(folder_.Units(problem).at(0).id, kUnit);
  EXPECT_EQ(problem, "");
  const NoDescriptors none;
  folder_.Units(problem);
  EXPECT_NE(problem, "");
  EXPECT_TRUE(folder_.Read("00000000000B", everything_, 10).empty());
}

TEST_F(DataFolderOnDisk, SeesWhatIsAppendedToAFile) {
  const std::string content = FileOf(RecordsAt(0, 5));
  const auto append = [&](std::size_t from, std::size_t until) {
    std::ofstream(temporary_.Path() / kUnit / "1", std::ios::app | std::ios::binary)
        << content.substr(from, until - from);
  };
  Write("1", content.substr(0, 28));
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(0, 2));
  append(28, 50);
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(0, 2)) << "what is known stays readable";
  now_ += seconds(1);
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(0, 3));
  append(50, 70);
  now_ += seconds(1);
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(0, 5));
  Write("1", FileOf(RecordsAt(7, 5)));
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(7, 5)) << "another content is seen at once";
  Write("2", FileOf(RecordsAt(12, 2)));
  EXPECT_EQ(folder_.Read(kUnit, everything_, 10), RecordsAt(7, 7));
  std::filesystem::remove_all(temporary_.Path() / kUnit);
  EXPECT_TRUE(folder_.Read(kUnit, everything_, 10).empty());
}

TEST_F(DataFolderOnDisk, ComesBackWhenDescriptorsDo) {
  Write("1", FileOf(RecordsAt(0, 720)));
  std::int64_t count = 720;
  for (const int left : {0, 0, 1}) {  // the last is enough to list the folder, or to read a file of it
    Write("2", FileOf(RecordsAt(720, count - 710)));
    now_ += seconds(1);
    {
      const NoDescriptors none(left);
      EXPECT_TRUE(folder_.Read(kUnit, everything_, 5000).empty()) << left;
      now_ += seconds(60);
      EXPECT_TRUE(folder_.Read(kUnit, everything_, 5000).empty()) << left;
    }
    EXPECT_FALSE(log_.empty()) << left;
    log_.clear();
    now_ += seconds(1);
    EXPECT_EQ(folder_.Read(kUnit, everything_, 5000), RecordsAt(0, count + 10)) << left;
    ++count;
  }
}

TEST_F(DataFolderOnDisk, WaitsForAFileThatCantBeRead) {
  Write("1", FileOf(RecordsAt(0, 10)));
  Write("2", FileOf(RecordsAt(10, 10)));
  const auto read = [this] { return folder_.Read(kUnit, everything_, 100); };
  for (const char* when : {"before it is known", "when it is known"}) {
    {
      const Unreadable file(temporary_.Path() / kUnit / "1");
      EXPECT_TRUE(read().empty()) << when;
      now_ += seconds(9);
      EXPECT_TRUE(read().empty()) << when;
      ASSERT_EQ(log_.size(), 1u) << when;
      EXPECT_NE(log_[0].find("/1 can't be read"), std::string::npos) << log_[0];
      now_ += seconds(1);
      EXPECT_EQ(read(), RecordsAt(10, 10)) << "the others do not wait for ever";
    }
    log_.clear();
    now_ += seconds(1);
    EXPECT_EQ(read(), RecordsAt(0, 20)) << when;
  }
}

}  // namespace
}  // namespace pallomir::station
