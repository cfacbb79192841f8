#include "station/store/data_writer.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <future>
#include <random>

#include "reports/file_summaries.h"
#include "station/station_testing.h"
#include "station/store/data_files.h"
#include "station/store/data_folder.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "00000000000A";

class DataWriter : public testing::Test {
 protected:
  TemporaryFolder temporary_;
  const fs::path data_ = temporary_.Path();
  const fs::path unit_ = data_ / kUnit;

  MergeOutcome Merge(const std::vector<WireRecord>& records) {
    const ImportLock lock(data_, std::chrono::minutes(1));
    EXPECT_EQ(lock.Problem(), "");
    return MergeIntoUnit(lock, kUnit, records);
  }

  // All records of the unit, and that its files are as they must be: whole records, at most 720 of them,
  // ascending in the order of the names and within.
  std::vector<WireRecord> CheckedRecords() const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(unit_)) files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<WireRecord> all;
    for (const fs::path& file : files) {
      const DataFileContent content = ReadDataFile(file);
      EXPECT_EQ(content.problem, "") << file;
      for (const WireRecord& record : content.records) {
        EXPECT_TRUE(all.empty() || all.back().time < record.time) << file;
        all.push_back(record);
      }
    }
    return all;
  }
};

TEST_F(DataWriter, MergesAnythingIntoAnything) {
  std::mt19937 random(11);
  std::map<std::uint32_t, WireRecord> expected;
  for (int round = 0; round < 40; ++round) {
    std::map<std::uint32_t, WireRecord> batch;
    const std::int64_t start = random() % 20000, step = 1 + random() % 5;
    for (const WireRecord& record : RecordsAt(start, 1 + random() % 1600, step)) {
      if (random() % 4 == 0) continue;
      batch[record.time] = record;
      batch[record.time].status = static_cast<std::uint16_t>(round);  // tells who was there first
    }
    std::vector<WireRecord> records;
    std::size_t there = 0;
    for (const auto& [time, record] : batch) {
      records.push_back(record);
      there += expected.contains(time) ? 1 : 0;
    }
    expected.merge(batch);
    const MergeOutcome outcome = Merge(records);
    ASSERT_EQ(outcome.error, "");
    ASSERT_EQ(outcome.alreadyThere, there);
    ASSERT_EQ(outcome.added, records.size() - there);

    const auto stored = CheckedRecords();
    ASSERT_EQ(stored.size(), expected.size());
    ASSERT_TRUE(std::ranges::equal(stored, expected, {}, {}, [](const auto& e) { return e.second; }));
    for (const FileSummaries summaries = ReadSummaries(data_, kUnit);
         const auto& entry : fs::directory_iterator(unit_)) {
      struct stat status {};
      ASSERT_EQ(::stat(entry.path().c_str(), &status), 0);
      const auto summary = summaries.find(entry.path().filename().string());
      ASSERT_NE(summary, summaries.end());
      ASSERT_EQ(summary->second.stamp, StampOf(status)) << "it is made with the file";
    }
  }
}

TEST_F(DataWriter, FillsFilesUpAndTouchesNothingWhenNothingIsNew) {
  temporary_.Write(".incoming/" + kUnit + "/20261122-120000.dat", "half, left by a crash");
  for (int i = 0; i < 10; ++i) Merge(RecordsAt(i * 150, 150));
  EXPECT_EQ(CheckedRecords(), RecordsAt(0, 1500));
  EXPECT_EQ(IndexUnitFolder(unit_).files.size(), 3u);
  EXPECT_FALSE(fs::exists(data_ / ".incoming" / kUnit));
  const auto before = fs::last_write_time(unit_);
  EXPECT_EQ(Merge(RecordsAt(0, 1000)).added, 0u);
  EXPECT_EQ(fs::last_write_time(unit_), before);
}

TEST_F(DataWriter, TakesForeignFilesAlong) {
  const std::string name = DataFileName(RecordAt(0).time);
  temporary_.Write(kUnit + "/" + name, std::string(27, '\0'));  // has the name that is wanted
  temporary_.Write(kUnit + "/notes.txt", "notes");
  temporary_.Write(kUnit + "/folder/inside", "more");
  fs::create_symlink("notes.txt", unit_ / "link");
  fs::create_symlink("itself", unit_ / "itself");
  fs::create_directory(unit_ / DataFileName(RecordAt(720).time));
  const MergeOutcome outcome = Merge(RecordsAt(0, 730));
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.problems.size(), 3u);  // the link reads as the notes do
  EXPECT_EQ(fs::file_size(unit_ / name), 27u);
  EXPECT_EQ(fs::file_size(unit_ / "notes.txt"), 5u);
  EXPECT_TRUE(fs::exists(unit_ / "folder/inside"));
  EXPECT_TRUE(fs::is_symlink(unit_ / "link"));
  EXPECT_TRUE(fs::is_symlink(unit_ / "itself"));
  EXPECT_TRUE(fs::is_directory(unit_ / DataFileName(RecordAt(720).time)));
  DataFolder folder(data_, [](const std::string&) {});
  EXPECT_EQ(folder.Read(kUnit, {kNoon, kNoon + kDay}, 1000), RecordsAt(0, 730));
}

// What a link leads to is not ours to empty, replace or take apart.
TEST_F(DataWriter, LeavesLinksAlone) {
  const Bytes file = EncodeDataFile(RecordsAt(5, 10));
  const std::pair<const char*, fs::path> cases[] = {
      {"00000000000A", "elsewhere"},
      {"00000000000A", "00000000000A"},
      {".incoming", "elsewhere"},
      {".incoming/00000000000A", "../elsewhere"},
      {"00000000000A/20261122-120000.dat", "../elsewhere/1"},
  };
  for (const auto& [link, target] : cases) {
    for (const auto& entry : fs::directory_iterator(data_)) fs::remove_all(entry.path());
    temporary_.Write("elsewhere/1", AsText(file));
    temporary_.Write("elsewhere/notes.txt", "notes");
    fs::create_directories((data_ / link).parent_path());
    fs::create_directory_symlink(target, data_ / link);
    const ImportLock lock(data_, {});
    const std::string error =
        lock.Problem().empty() ? MergeIntoUnit(lock, kUnit, RecordsAt(0, 20)).error : lock.Problem();
    EXPECT_NE(error.find("is a link"), std::string::npos) << link << " " << error;
    EXPECT_TRUE(fs::is_symlink(data_ / link)) << link;
    EXPECT_EQ(fs::file_size(data_ / "elsewhere/1"), file.size()) << link;
    EXPECT_EQ(fs::file_size(data_ / "elsewhere/notes.txt"), 5u) << link;
  }
}

TEST_F(DataWriter, ChangesNothingWhereItCantRead) {
  Merge(RecordsAt(0, 2880, 10));
  {
    const Unreadable file(unit_ / DataFileName(RecordAt(7200).time));
    EXPECT_NE(Merge(RecordsAt(5, 2880, 10)).error.find("can't be read"), std::string::npos);
  }
  EXPECT_EQ(CheckedRecords(), RecordsAt(0, 2880, 10));
}

TEST_F(DataWriter, WaitsForAnotherImport) {
  std::optional<ImportLock> first(std::in_place, data_, std::chrono::milliseconds(0));
  EXPECT_EQ(first->Problem(), "");
  EXPECT_NE(ImportLock(data_, std::chrono::milliseconds(30)).Problem().find("at work"), std::string::npos);
  auto second =
      std::async(std::launch::async, [this] { return ImportLock(data_, std::chrono::minutes(1)).Problem(); });
  first.reset();
  EXPECT_EQ(second.get(), "");
}

TEST_F(DataWriter, ChangesNothingWhenTheDiskIsFull) {
  Merge(RecordsAt(0, 10));
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit tiny{5000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &tiny);
  const std::string error = Merge(RecordsAt(10, 2000)).error;
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_NE(error, "");
  EXPECT_EQ(CheckedRecords(), RecordsAt(0, 10));
  EXPECT_FALSE(fs::exists(data_ / ".incoming" / kUnit));
}

// A process that imports is killed at any moment, again and again, while this one reads.
TEST_F(DataWriter, SurvivesBeingKilled) {
  std::mt19937 random(5);
  Merge(RecordsAt(0, 3000, 10));
  DataFolder folder(data_, [](const std::string&) {});
  std::size_t latest = 3000;
  for (int round = 0; round < 40; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (std::int64_t i = round;; i += 40) Merge(RecordsAt(i * 7919 % 30'000, 1));
    }
    for (auto reads = 1 + random() % 40; reads > 0; --reads) {
      const auto read = folder.Read(kUnit, {kNoon, kNoon + 30 * kDay}, 100'000);
      if (read.empty()) continue;  // found no quiet moment; a reader comes back later
      EXPECT_GE(read.size(), latest) << "a reader misses what was there";
      latest = read.size();
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const auto records = CheckedRecords();
    EXPECT_GE(records.size(), latest);
    latest = records.size();
  }
}

}  // namespace
}  // namespace pallomir::station
