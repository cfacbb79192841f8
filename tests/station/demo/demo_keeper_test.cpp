#include "station/demo/demo_keeper.h"

#include "base/whole_file.h"
#include "station/demo/demo_source.h"
#include "station/station_testing.h"
#include "station/store/data_files.h"
#include "station/store/demo_records.h"
#include "station/store/open_store.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "000000000001", kOther = "000000000002", kLast = "000000000009";

class DemoFiles : public testing::Test {
 protected:
  std::unique_ptr<UnitStore> Store() const {
    return OpenStore(data_, [](const std::string&) {});
  }

  // Of today and yesterday.
  std::string Record(Millis now) { return DemoRecorder(Store(), 1).Record(now, {}); }

  // All files of a unit, one behind the other.
  std::string Content(const std::string& unit) const {
    std::map<fs::path, std::string> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(data_ / unit))
      files[entry.path()] = ReadWholeFile(entry.path(), kMaxDataFileSize, error).value_or("unread");
    std::string all;
    for (const auto& [name, content] : files) all += content;
    return all;
  }

  // What clients are sent of the time from so many days before `now` until then.
  static std::string Sent(const std::string& unit, Millis now, int days) {
    DemoSource source([now] { return now; });
    const auto records = source.Read(unit, {WholeDay(now) - days * kDay, now}, 1'000'000);
    const Bytes bytes = EncodeDataFile(records);
    return std::string(AsText(bytes));
  }

  std::vector<Visit> VisitsAt(Place place) const {
    const auto store = Store();
    std::string problem;
    const auto search = store->SearchVisits(
        {store->UnitsToSearch(problem), SearchArea::Around(place.latitude, place.longitude, 0.001), {}, 500});
    while (search->Step()) {
    }
    EXPECT_EQ(search->Problem(), "");
    return search->Visits();
  }

  TemporaryFolder folder_;
  const fs::path data_ = folder_.Path() / "data";
};

TEST_F(DemoFiles, HoldWhatClientsAreSent) {
  DemoRecorder recorder(Store());
  ASSERT_EQ(recorder.Record(kNoon, {}), "");
  EXPECT_EQ(Content(kUnit), Sent(kUnit, kNoon, 14));
  EXPECT_EQ(Content(kLast), Sent(kLast, kNoon, 14));
  std::uintmax_t size = 0;
  for (const auto& entry : fs::recursive_directory_iterator(data_))
    if (entry.is_regular_file()) size += entry.file_size();
  EXPECT_LT(size, 12'000'000u);
  EXPECT_TRUE(fs::exists(data_ / ".summaries" / kUnit));

  DemoSource source([] { return kNoon; });
  const WireRecord seen = source.Read(kUnit, {kNoon - kHour, kNoon}, 1).at(0);
  EXPECT_GE(VisitsAt({seen.latitude / 600000.0, seen.longitude / 600000.0}).size(), 14u * 12)
      << "it passes there in every trip";

  ASSERT_EQ(recorder.Record(kNoon + 13 * kHour, {}), "");
  EXPECT_EQ(Content(kUnit), Sent(kUnit, kNoon + 13 * kHour, 14)) << "a day more and a day less";
}

TEST_F(DemoFiles, AreNoStoredUnits) {
  ASSERT_EQ(Record(kNoon), "");
  const auto store = Store();
  std::string problem;
  EXPECT_TRUE(store->Units(problem).empty());
  EXPECT_EQ(store->UnitsToSearch(problem).size(), 9u);
  EXPECT_FALSE(store->Knows(kUnit));
  EXPECT_TRUE(store->Read(kUnit, {0, kNoon}, 1).empty());
}

TEST_F(DemoFiles, LeaveOthersDataAlone) {
  const Bytes own = EncodeDataFile(RecordsAt(-kDay / kSecond, 3));
  folder_.Write("data/" + kOther + "/a", AsText(own));
  ASSERT_EQ(Record(kNoon), "");
  EXPECT_EQ(Content(kOther), AsText(own));

  // An import takes the place of the demo's.
  const auto store = Store();
  std::string problem;
  const auto records = RecordsAt(-kDay / kSecond, 3);
  EXPECT_EQ(store->StartWriting(std::chrono::seconds(20), problem)->Merge(kUnit, records).added, 3u);
  EXPECT_EQ(Content(kUnit), AsText(own));
  ASSERT_EQ(Record(kNoon + kDay), "");
  EXPECT_EQ(Content(kUnit), AsText(own));
  EXPECT_TRUE(store->Knows(kUnit));
}

TEST_F(DemoFiles, AreMendedAfterACrash) {
  ASSERT_EQ(Record(kNoon), "");
  const fs::path file = *fs::directory_iterator(data_ / kUnit);
  folder_.Write(file, "torn");
  folder_.Write("data/" + kUnit + "/20261121-000001-demo.dat", AsText(EncodeDataFile(RecordsAt(0, 1))));
  folder_.Write("data/.incoming/demo", "half a file");
  ASSERT_EQ(Record(kNoon), "");
  EXPECT_EQ(Content(kUnit), Sent(kUnit, kNoon, 1));
}

TEST_F(DemoFiles, SayWhyTheyCantBeKept) {
  folder_.Write("data", "no folder");
  EXPECT_NE(Record(kNoon).find("can't"), std::string::npos);
}

TEST(DemoFileNames, AreNoOthers) {
  EXPECT_TRUE(IsDemoFileName("20261122-120000-demo.dat"));
  for (const char* name : {"20261122-120000.dat", "x0261122-120000-demo.dat", "20261122_120000-demo.dat",
                           "120261122-120000-demo.dat", "20261122-120000-demo.dat.new", ""})
    EXPECT_FALSE(IsDemoFileName(name)) << name;
}

}  // namespace
}  // namespace pallomir::station
