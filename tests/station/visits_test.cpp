#include "station/visits.h"

#include "fakes/process.h"
#include "station/station_testing.h"
#include "station/store/data_files.h"
#include "station/store/open_store.h"

namespace pallomir::station {
namespace {

const std::string kUnit = "00000000000A", kOther = "00000000000B";

// A track along the equator: a record a minute from noon on, a thousandth of a degree apart.
std::string Track(int from, int count) {
  std::vector<WireRecord> records;
  for (int i = from; i < from + count; ++i)
    records.push_back({EncodePackedTime(kNoon + i * kMinute).value_or(0), 0, i * 600, 0});
  const Bytes bytes = EncodeDataFile(records);
  return std::string(AsText(bytes));
}

class Visits : public testing::Test {
 protected:
  Visits() {
    folder_.Write("data/" + kUnit + "/1", Track(0, 60));
    folder_.Write("data/" + kUnit + "/2", Track(60, 60));
    folder_.Write("data/" + kOther + "/1", Track(30, 20));
    folder_.Write("zones",
                  "\"Alerted\"\r\n"
                  "1,1,\"\",\"Road\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
                  "1,-1,0.0045\r\n1,-1,0.0475\r\n1,1,0.0475\r\n0,1,0.0045\r\n");
  }

  VisitsOutcome Find(const VisitsCommand& command) {
    return FindVisits(command, *OpenStore(folder_.Path() / "data", [](const std::string&) {}));
  }

  TemporaryFolder folder_;
};

TEST_F(Visits, ComeNewestExitFirst) {
  VisitsCommand command;
  command.at = Place{0, 0.040};
  const std::string a = kUnit + ",2026-11-22T12:39:00Z,2026-11-22T12:41:00Z,3\n";
  const std::string b = kOther + ",2026-11-22T12:39:00Z,2026-11-22T12:41:00Z,3\n";
  EXPECT_EQ(Find(command).list, "unit,entry,exit,records\n" + a + b);
  command.zoom = 12;
  EXPECT_EQ(Find(command).list, "unit,entry,exit,records\n" + kUnit +
                                    ",2026-11-22T12:37:00Z,2026-11-22T12:43:00Z,7\n" + kOther +
                                    ",2026-11-22T12:37:00Z,2026-11-22T12:43:00Z,7\n");
  command.radius = 200;
  command.limit = 1;
  EXPECT_EQ(Find(command).list, "unit,entry,exit,records\n" + a) << "111 metres a step";
  command.limit = 500;
  command.unitIds = {kOther, kOther};
  EXPECT_EQ(Find(command).list, "unit,entry,exit,records\n" + b) << "a unit named twice is one";
  command.asJson = true;
  EXPECT_EQ(Find(command).list,
            "[\n{\"unit\":\"" + kOther +
                R"(","entry":"2026-11-22T12:39:00Z","exit":"2026-11-22T12:41:00Z","records":3})" + "\n]\n");
  command.at->latitude = 1;
  EXPECT_EQ(Find(command).list, "[\n]\n");
  EXPECT_TRUE(Find(command).isDone);
}

TEST_F(Visits, KeepToTheirTimes) {
  VisitsCommand command;
  command.at = Place{0, 0.060};
  command.radius = 10 * 111195.0;
  command.unitIds = {kUnit};
  command.from = kNoon + 50 * kMinute;
  command.until = kNoon + 70 * kMinute;
  const std::string all =
      "unit,entry,exit,records\n" + kUnit + ",2026-11-22T12:50:00Z,2026-11-22T13:10:00Z,21\n";
  EXPECT_EQ(Find(command).list, all);
  *command.from -= kSecond - 1;
  *command.until += kSecond - 1;
  EXPECT_EQ(Find(command).list, all);
  command.from.reset();
  EXPECT_EQ(Find(command).list,
            "unit,entry,exit,records\n" + kUnit + ",2026-11-22T12:00:00Z,2026-11-22T13:10:00Z,71\n");
  command.until = ToMillis({1999, 12, 31});
  EXPECT_EQ(Find(command).list, "unit,entry,exit,records\n");
}

TEST_F(Visits, OfAZoneNeedItsFile) {
  VisitsCommand command;
  command.zones = folder_.Path() / "zones";
  command.zone = "1";
  command.unitIds = {kUnit};
  EXPECT_EQ(Find(command).list,
            "unit,entry,exit,records\n" + kUnit + ",2026-11-22T12:05:00Z,2026-11-22T12:47:00Z,43\n");
  command.zone = "1.1";
  EXPECT_NE(Find(command).complaint.find("has no zone 1.1"), std::string::npos);
  folder_.Write("zones", "\"Alerted\"\r\n1,2,\"\",\"Deep\",\"SMTWTFS\",\"0000\",\"0000\"\r\n0,1,1\r\n");
  EXPECT_FALSE(Find(command).isDone);
  command.zones = folder_.Path() / "none";
  EXPECT_NE(Find(command).complaint.find("can't be read"), std::string::npos);
}

TEST_F(Visits, TellByTheExitCodeWhetherTheSearchRan) {
  const std::string data = folder_.Path() / "data";
  const std::string config = folder_.Write("station.ini", "");
  const auto run = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {STATION_PROGRAM, "--config", config, "visits", "--data", data});
    fakes::Process program(more);
    const int code = program.Wait();
    program.Await("no such line");
    return std::to_string(code) + " " + program.Output();
  };
  EXPECT_EQ(run({"--at", "50,8"}), "0 unit,entry,exit,records\n");
  folder_.Write("data/" + kUnit + "/0", "torn");
  EXPECT_EQ(run({"--at", "50,8"}),
            "1 unit,entry,exit,records\npallomir-station: Error 65387: Corrupted file -- 0\n");
  EXPECT_EQ(run({"--at", "50"}).substr(0, 2), "2 ");
  std::filesystem::remove_all(data);
  EXPECT_EQ(run({"--at", "50,8"}).substr(0, 2), "1 ") << "without a data folder nothing was searched";
}

}  // namespace
}  // namespace pallomir::station
