#include "reports/data_file.h"
#include "shell/client_testing.h"

// "Been Here?" from the popup and from a zone, to the days on the map.

namespace pallomir {
namespace {

constexpr char kZones[] =
    "\"Alerted\"\r\n"
    "1,1,\"\",\"Depot\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
    "1,40,-75\r\n1,40,-74\r\n1,41,-74\r\n0,41,-75\r\n";

class VisitJointsTest : public ClientTest {
 protected:
  void Start() {
    std::filesystem::create_directories(Data() / kSecondUnit);
    Bytes records;
    for (const WireRecord& record : {Record(0, 40.5, -74.5), Record(60, 40.5, -74.5), Record(120, 42, -74.5)})
      AppendFileRecord(records, record);
    fakes::WriteFile(Data() / kSecondUnit / "1", std::string(AsText(records)));
    fakes::WriteFile(folders.Path() / "data/pallomir/ZoneMenus.txt", kZones);
    clock.now = ToMillis({2026, 11, 23, 12});
    StartStreaming();
    ReportMapReady();
  }
  std::filesystem::path Data() const { return folders.Path() / "data/pallomir/Data"; }
  void Choose(const char* entry) { client->MenuChosen(client->Menus().At(entry)); }
  // A right-click where the second of two moves is the one that is not acted on.
  void ClickHere() {
    Command("m00100001000024000000-044700000013");
    Command("m00200002000024300000-044700000012");
    Command("F0024300000-044700000");
  }
  BeenHere& Search() {
    visitsView.search->Search();
    loop.RunPosted();
    return *visitsView.search;
  }

  static constexpr char kSecondUnit[] = "0123456789AC";
};

TEST_F(VisitJointsTest, ClickSearchAndTheDaysOfAVisit) {
  Start();
  ClickHere();
  EXPECT_EQ(client->Page().LastMouseZoom, 12) << "that of the click";
  browser.writes.clear();
  Choose("mnuPopupBeenHere");
  ASSERT_TRUE(visitsView.search);
  EXPECT_THAT(browser.writes, testing::Contains(testing::Pair("TxtG", "True")));
  EXPECT_EQ(visitsView.search->Target().name, "40.500000, -74.500000");
  EXPECT_EQ(visitsView.search->Caption(), "Been Here?");
  Command("GMain%20Street%201%20%2Cxx");
  EXPECT_THAT(visitsView.search->Caption(), HasSubstr("Been to Main Street"));
  EXPECT_EQ(Search().Line(0), " Unit-2:      11/22/26 07:00:00 AM -- 11/22/26 07:01:00 AM");
  Command("F0024000000-044700000");
  client->MapReload();
  EXPECT_EQ(visitsView.search->Visits().size(), 1u) << "it survives other clicks and reloads";
  EXPECT_FALSE(client->Units().List()[1].enabled);
  visitsView.search->Load(0);
  EXPECT_TRUE(client->Units().List()[1].enabled);
  EXPECT_EQ(client->Window(), (TimeWindow{ToMillis({2026, 11, 22}), ToMillis({2026, 11, 23})}));
  EXPECT_EQ(client->Units().Book().enabledCount, 2u);
  const auto file = folders.Path() / "visits.csv";
  visitsView.actions.save();
  visitsView.fileChosen(file);
  loop.RunPosted();
  EXPECT_THAT(fakes::ReadFile(file), HasSubstr("0123456789AC,2026-11-22T12:00:00Z,2026-11-22T12:01:00Z,2\n"));
  EXPECT_THAT(visitsView.search->Status(), HasSubstr("Saved as"));
  client->Unload();
  EXPECT_FALSE(visitsView.search);
}

TEST_F(VisitJointsTest, AZoneIsSearchedAsItIsWhenTheSearchStarts) {
  Start();
  ClickHere();
  const MenuItem& been = client->Menus().At(Command::kZoneMenu).children.back();
  EXPECT_EQ(been.caption, "&Been To Depot ?");
  ASSERT_TRUE(been.enabled);
  client->MenuChosen(been);
  ASSERT_TRUE(visitsView.search);
  EXPECT_EQ(visitsView.search->Caption(), "Been to Depot?");
  EXPECT_EQ(Search().Visits().size(), 1u);
  Choose("mnuZonesDeleteAllZones");
  box.AnswerIt({true, ""});
  EXPECT_THAT(Search().Visits(), IsEmpty());
  EXPECT_THAT(visitsView.search->Status(), HasSubstr("not there any more"));
}

}  // namespace
}  // namespace pallomir
