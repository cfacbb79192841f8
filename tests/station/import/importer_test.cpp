#include "station/import/importer.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>

#include "station/station_testing.h"
#include "station/store/open_store.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "00000000000A";
const Millis kToday = ToMillis({2026, 11, 22});

std::string Gpx(int firstSecond, int count) {
  std::string text = "<gpx><trk><trkseg>";
  for (int i = firstSecond; i < firstSecond + count; ++i)
    text += "<trkpt lat='40' lon='-75'><time>2026-11-22T12:00:" + std::to_string(10 + i) + "Z</time></trkpt>";
  return text + "</trkseg></trk></gpx>";
}

class Importing : public testing::Test {
 protected:
  TemporaryFolder temporary_;
  const fs::path data_ = temporary_.Path() / "data";
  const std::unique_ptr<UnitStore> store_ = OpenStore(data_, [](const std::string&) {});

  ImportOutcome ImportFiles(std::vector<std::string> files, std::optional<std::string> description = {}) {
    return Import({kUnit, std::move(description), false, std::move(files)}, *store_, kToday);
  }
  std::string Described(const std::string& unitId) const {
    std::string problem;
    const auto writer = store_->StartWriting(std::chrono::minutes(1), problem);
    const auto description = writer ? writer->Description(unitId, problem) : std::nullopt;
    EXPECT_EQ(problem, "");
    return description.value_or("(none)");
  }
  std::vector<WireRecord> Stored(const std::string& unitId = kUnit) const {
    return store_->Read(unitId, {ToMillis({2000, 1, 1}), ToMillis({2031, 12, 31})}, 10'000'000);
  }
};

TEST_F(Importing, TakesSeveralFilesAsOneUnit) {
  const auto a = temporary_.Write("Morning drive.gpx", Gpx(0, 10));
  const auto b = temporary_.Write("b.gpx", Gpx(5, 10));
  const ImportOutcome outcome = ImportFiles({a, b});
  EXPECT_TRUE(outcome.isDone);
  EXPECT_EQ(outcome.text,
            "00000000000A: 15 points taken, 5 left out\n"
            "  5 in the same second as another point\n"
            "  1 were put in order\n"
            "  from 2026-11-22 12:00:10 to 2026-11-22 12:00:24 UTC\n");
  EXPECT_EQ(Stored().size(), 15u);
  EXPECT_EQ(Described(kUnit), "Morning drive");

  const auto c = temporary_.Write("c.gpx",
                                  "<gpx><trk><trkseg><trkpt lat='40' lon='-75'/>"
                                  "<trkpt lat='40' lon='-75'><time>noon</time></trkpt>"
                                  "<trkpt lat='91' lon='-75'><time>2026-11-22T12:01:00Z</time></trkpt>"
                                  "<trkpt lat='40' lon='-75'><time>1999-11-22T12:01:00Z</time></trkpt>"
                                  "</trkseg></trk></gpx>");
  EXPECT_NE(ImportFiles({a, b, c}).text.find("0 points taken, 24 left out"), std::string::npos)
      << "5 of one second, 15 that were there, one of each other kind";
  EXPECT_EQ(Stored().size(), 15u);
}

TEST_F(Importing, ChangesNothingWhenAFileIsNoGood) {
  const auto good = temporary_.Write("good.gpx", Gpx(0, 10));
  const fs::path pipe = temporary_.Path() / "pipe.gpx";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::string bad[] = {
      pipe,
      "/dev/zero",
      temporary_.Path() / "missing.gpx",
      temporary_.Path(),
      temporary_.Write("picture.gpx", std::string("\x89PNG\r\n\x1a\n\0\0", 10)),
      temporary_.Write("cut.gpx", Gpx(0, 10).substr(0, 200)),
      temporary_.Write("page.gpx", "<html/>"),
  };
  for (const std::string& file : bad) {
    const ImportOutcome outcome = ImportFiles({good, file});
    EXPECT_FALSE(outcome.isDone) << file;
    EXPECT_NE(outcome.text.find(file), std::string::npos) << outcome.text;
    EXPECT_EQ(outcome.text.find("directory") != std::string::npos,
              file == bad[2] || file == temporary_.Path())
        << outcome.text;
  }
  const auto huge = temporary_.Write("huge.gpx", "<gpx/>");
  EXPECT_FALSE(ImportFiles({huge}).isDone) << "no points in it";
  fs::resize_file(huge, 3'000'000'000);  // takes no room on the disk
  EXPECT_FALSE(ImportFiles({huge}).isDone);
  EXPECT_FALSE(fs::exists(data_));
}

TEST_F(Importing, SaysWhenADescriptionHadToChange) {
  const auto file = temporary_.Write("a.gpx", Gpx(0, 10));
  EXPECT_NE(ImportFiles({file}, "A \"red\" ~\nvan ").text.find("described as \"A red van\""),
            std::string::npos);
  EXPECT_EQ(Described(kUnit), "A red van");
  ImportFiles({file});
  EXPECT_EQ(Described(kUnit), "A red van") << "stays without a new one";
}

TEST_F(Importing, KeepsTheOtherLinesOfTheDescriptions) {
  const auto file = temporary_.Write("a.gpx", Gpx(0, 1));
  const std::string lines = "# by hand\r\n0000000000ab lower\n00000000000C Car\n";
  temporary_.Write("data/descriptions.txt", "00000000000A Old\n" + lines + "no end");
  temporary_.Write("data/descriptions.txt.new-1", "left by a process that died");
  EXPECT_TRUE(ImportFiles({file}, "Van").isDone);
  EXPECT_EQ(fakes::ReadFile(data_ / "descriptions.txt"), lines + "no end\n00000000000A Van\n");
  EXPECT_FALSE(fs::exists(data_ / "descriptions.txt.new-1"));
}

TEST_F(Importing, TakesUnreadableDescriptionsForNoEmptyOnes) {
  const auto file = temporary_.Write("a.gpx", Gpx(0, 1));
  const auto descriptions = temporary_.Write("data/descriptions.txt", "00000000000C Car\n");
  const auto fails = [&] {
    const ImportOutcome outcome = ImportFiles({file}, "Van");
    EXPECT_FALSE(outcome.isDone);
    EXPECT_NE(outcome.text.find("descriptions.txt can't be read"), std::string::npos) << outcome.text;
    EXPECT_TRUE(Stored().empty());
  };
  {
    const Unreadable unreadable(descriptions);
    fails();
  }
  EXPECT_EQ(Described("00000000000C"), "Car");
  temporary_.Write("data/descriptions.txt", std::string(2'000'000, 'x'));
  fails();
}

TEST_F(Importing, SeveralAtOnceLoseNothing) {
  const auto file = temporary_.Write("a.gpx", Gpx(0, 10));
  std::vector<pid_t> children;
  for (int i = 0; i < 20; ++i) {
    children.push_back(::fork());
    if (children.back() != 0) continue;
    const std::string number = std::to_string(10 + i);
    ::_exit(Import({"0000000000" + number, number, false, {file}}, *store_, kToday).isDone ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  for (int i = 0; i < 20; ++i) {
    const std::string unit = "0000000000" + std::to_string(10 + i);
    EXPECT_EQ(Described(unit), std::to_string(10 + i));
    EXPECT_EQ(Stored(unit).size(), 10u) << unit;
  }
}

// Recordings of real devices: nothing is lost but doubled seconds, and given and computed speeds are in reach
// of each other.
TEST_F(Importing, TakesRealRecordings) {
  const char* const other = std::getenv("RECORDED_TRACKS");
  const fs::path folder = other != nullptr ? other : RECORDED_TRACKS;
  if (!fs::exists(folder))
    GTEST_SKIP() << "no recordings in " << folder << "; RECORDED_TRACKS may name another folder";
  const std::tuple<const char*, std::size_t, double> cases[] = {
      {"moscow-2009.gpx", 2746, 90},
      {"basel-bicycle-2018.gpx", 479, 40},
      {"cerknica-2010.gpx", 296, 110},  // one jump of 180 m in 2 s
      {"alps-hike-2019.gpx", 3540, 15},
      {"los-gatos-run-2017.gpx", 988, 20},
      {"gpl-2.0/ontario-car-2020.gpx", 12027, 82},
      {"gpl-2.0/the-hague-car-2010.gpx", 3452, 63},
      {"gpl-2.0/new-york-bicycle-2013.gpx", 1812, 22},
  };
  int number = 0;
  for (const auto& [file, points, topMph] : cases) {
    const std::string unitId = "00000000001" + std::to_string(number++);
    const ImportOutcome outcome = Import({unitId, {}, false, {folder / file}}, *store_, kToday);
    EXPECT_TRUE(outcome.isDone) << outcome.text;
    const auto records = Stored(unitId);
    EXPECT_EQ(records.size(), points) << outcome.text;
    double top = 0;
    for (const WireRecord& record : records) top = std::max(top, (record.status & 0x1FF) * 0.345233535);
    EXPECT_LT(top, topMph) << file;
    EXPECT_GT(top, topMph / 3) << file;
  }
}

}  // namespace
}  // namespace pallomir::station
