#include <cmath>

#include "base/whole_file.h"
#include "commands/command_table.h"
#include "map/projection.h"
#include "shell/client_testing.h"

// The tables of data points in the running client: what is listed, and when they close.

namespace pallomir {
namespace {

// The first unit of the list is switched off.
constexpr char kUnits[] = "-0123456789ACOff~X0123456789ABSecond~X0123456789ADThird~";
constexpr char kSecond[] = "0123456789AB", kThird[] = "0123456789AD";

class PointTableTest : public ClientTest {
 public:
  // A page at zoom 12, in whose middle the second unit stands, goes north and east, and stands. A pixel is
  // 0.00034 degrees of longitude.
  void Start(const std::map<std::string, std::string>& stored = {}) {
    UseUnits(kUnits);
    for (const auto& [key, value] : stored) settings.values[key] = value;
    settings.values["OnUpdate"] = "Do &Nothing";
    client->Load();
    Connect();
    ReportMapReady();
    Command("M40.600000,-75.400000");
    Command("S99");
    loop.Advance(500);
    Arrive(PacketOf({Record(0, 40.6, -75.4, 0x0C05), Record(60, 40.6, -75.399, 0x4006),
                     Record(120, 40.6, -75.398, 0xF064), Record(180, 40.6, -75.39, 0)},
                    kSecond));
    client->FitByUser(0);
    loop.Advance(1000);
    Command("M40.600000,-75.400000");
    Command("Z12");
    loop.Advance(1000);
    Arrive(PacketOf({Record(5, 1, 1)}, kThird));  // from now on arrivals are held
  }
  void Click(double lat, double lng) {
    const auto units = [](double degrees) {
      std::string text = std::to_string(std::lround(std::abs(degrees) * 600000));
      text.insert(0, 9 - text.size(), '0');
      return (degrees < 0 ? "-" : "0") + text;
    };
    Command("F" + units(lat) + units(lng));
  }
  bool Key(char key) { return client->KeyDown(kNoModifier, key); }
  bool IsOpen() const { return pointTableView.table.has_value(); }
  // The open table, a line a row: the texts, the pictures of direction and status.
  std::string Rows() const {
    std::string text;
    for (const PointTableRow& row : pointTableView.table.value_or(PointTable()).rows)
      text += row.txtIdx + ' ' + row.txtDst + ' ' + row.txtUnt + ' ' + row.txtTim + ' ' + row.txtSpd + ' ' +
              std::to_string(row.imgDir) + ' ' + std::to_string(row.imgAPt) + '\n';
    return text;
  }
};

constexpr char kNearbyRows[] =
    "1 0.0 2 11/22/26 07:00:00 AM 1.7 0 20\n"
    "2 2.9 2 11/22/26 07:01:00 AM 2.1 5 17\n"
    "3 5.8 2 11/22/26 07:02:00 AM 34.5 16 17\n"
    "4 29.1 2 11/22/26 07:03:00 AM 0.0 0 17\n";

TEST_F(PointTableTest, NearbyListsWhatLiesAroundTheClick) {
  Start({{"Unit Of Measure", "1"}});
  EXPECT_TRUE(Key('N'));
  ASSERT_TRUE(IsOpen());
  EXPECT_EQ(pointTableView.table->emptyNote, "no place has been right-clicked");
  Click(40.6, -75.4);
  EXPECT_TRUE(IsOpen()) << "a click alone changes nothing";
  Key('N');
  EXPECT_EQ(Rows(), kNearbyRows) << "speeds in miles, whatever the unit of measure is";
  EXPECT_EQ(browser.Written("TxtG").size(), 2u);
  Command("G%41%20%78%78");
  EXPECT_EQ(pointTableView.address, "")
      << "that was the answer to the first question, which tells of the centre";
  Command("G%42%20%78%78");
  EXPECT_EQ(pointTableView.address, "B ");
  Click(41, -75.4);
  client->MenuChosen(client->Menus().At(Command::kNearby));
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(pointTableView.address, "");
  EXPECT_EQ(pointTableView.table->emptyNote, "no point within 50 pixels");
}

TEST_F(PointTableTest, FastestListsWhatMovesInTheChosenUnit) {
  Start({{"Unit Of Measure", "1"}});
  client->MenuChosen(client->Menus().At(Command::kMaxSpeed));
  EXPECT_EQ(Rows(),
            "3 0.2 2 11/22/26 07:02:00 AM 55.6 16 17\n"
            "2 0.1 2 11/22/26 07:01:00 AM 3.3 5 17\n"
            "1 0.0 2 11/22/26 07:00:00 AM 2.8 1 20\n");
  EXPECT_EQ(SummaryOf(*pointTableView.table, pointTableView.table->rows[2]),
            "Point 1 of unit 2, 0.0 km, 11/22/26 07:00:00 AM, 2.8 kph, N, Received and not received");
  pointTableView.actions.hovered(0);
  const auto shown = view.marker;
  ASSERT_TRUE(shown);
  EXPECT_TRUE(IsOpen()) << "the mark belongs to it";
  pointTableView.actions.hovered(1);
  EXPECT_EQ(view.marker->x, shown->x - 3);
  loop.Tick("BoxTimer");
  EXPECT_FALSE(view.marker);
  EXPECT_TRUE(IsOpen());
  pointTableView.actions.hovered(0);
  pointTableView.actions.closed();
  EXPECT_FALSE(IsOpen() || view.marker);
}

// The rows name points by what was drawn; those that came since have moved them.
TEST_F(PointTableTest, LatePointsDontMakeRowsNameOthers) {
  Start();
  client->Feed().TakeInHeld();
  Arrive(PacketOf({Record(30, 40.6, -75.3995, 0x1FF), Record(90, 40.6, -75.3985, 0x1FF)}, kSecond));
  Key('P');
  EXPECT_EQ(Rows(),
            "5 0.1 2 11/22/26 07:02:00 AM 34.5 16 17\n"
            "3 0.1 2 11/22/26 07:01:00 AM 2.1 5 17\n"
            "1 0.0 2 11/22/26 07:00:00 AM 1.7 0 20\n");
}

TEST_F(PointTableTest, WhileTilesAreDrawnTheFastestWait) {
  Start();
  client->FitByUser(0);
  Key('P');
  EXPECT_FALSE(IsOpen());
  Key('\x1b');
  loop.Advance(10);
  EXPECT_FALSE(IsOpen()) << "taken back";
  client->FitByUser(0);
  Key('P');
  loop.Advance(10);
  EXPECT_TRUE(IsOpen());
}

TEST_F(PointTableTest, CloseWhenPointsOrMapChange) {
  const struct {
    const char* what;
    std::function<void(PointTableTest&)> happens;
    bool closes;
  } cases[] = {
      {"pan", [](auto& test) { test.Command("M40.610000,-75.400000"); }, true},
      {"zoom", [](auto& test) { test.Command("Z13"); }, true},
      {"the same zoom", [](auto& test) { test.Command("Z12"); }, false},
      {"resize", [](auto& test) { test.client->Frame().Resized(); }, true},
      {"Escape", [](auto& test) { EXPECT_TRUE(test.Key('\x1b')); }, true},
      {"held arrival", [](auto& test) { test.Arrive(PacketOf({Record(9, 1, 1)}, kThird)); }, false},
      {"what was held is taken in", [](auto& test) { test.client->Feed().TakeInHeld(); }, true},
      {"decoding of what had arrived before",
       [](auto& test) {
         test.client->Feed().TakeInHeld();
         test.data.arrived(PacketOf({Record(9, 1, 1)}, kThird));
         test.Key('N');
         EXPECT_TRUE(test.IsOpen());
         test.loop.Tick("DataPause");
       },
       true},
      {"pointer over the map", [](auto& test) { test.Command("m0050000300002436000-045240000012"); }, false},
      {"a click elsewhere", [](auto& test) { test.Click(41, -75); }, false},
      {"pan to a row's point, and the end of its mark",
       [](auto& test) {
         test.pointTableView.actions.chosen(3);
         EXPECT_THAT(test.browser.Written("TxtP").back(), HasSubstr("-075.390000"));
         test.Command("M40.600000,-75.390000");
         EXPECT_TRUE(test.view.marker);
         test.loop.Tick("PlaceTimer");
         EXPECT_FALSE(test.view.marker);
       },
       false},
      {"pan to a row's point, but at another zoom",
       [](auto& test) {
         test.pointTableView.actions.chosen(3);
         test.Command("M40.600000,-75.390000");
         test.Command("Z11");
       },
       true},
      {"reload", [](auto& test) { test.Key('R'); }, true},
  };
  Start();
  EXPECT_FALSE(Key('\x1b')) << "nothing to close";
  for (const auto& [what, happens, closes] : cases) {
    Command("M40.600000,-75.400000");
    Command("Z12");
    Click(40.6, -75.4);
    Key('N');
    ASSERT_TRUE(IsOpen()) << what;
    happens(*this);
    EXPECT_EQ(IsOpen(), !closes) << what;
  }
}

TEST_F(PointTableTest, SavesWhatIsListedAndAsksBeforeItReplaces) {
  Start();
  Click(40.6, -75.4);
  Key('N');
  pointTableView.actions.save();
  const auto file = folders.Path() / "points.csv";
  const std::string csv =
      "Index,Distance (pixels),Unit,Time,Speed (mph),Heading,Status\r\n"
      "1,0.0,2,11/22/26 07:00:00 AM,1.7,,Received and not received\r\n"
      "2,2.9,2,11/22/26 07:01:00 AM,2.1,E,\r\n"
      "3,5.8,2,11/22/26 07:02:00 AM,34.5,NNW,\r\n"
      "4,29.1,2,11/22/26 07:03:00 AM,0.0,,\r\n";
  const auto content = [&] {
    std::error_code error;
    return ReadWholeFile(file, 10000, error).value_or("none");
  };
  fakes::WriteFile(file, "old");
  pointTableView.fileChosen(file);
  EXPECT_THAT(Trouble(), HasSubstr("points.csv is there already"));
  EXPECT_EQ(content(), "old");
  box.AnswerIt();
  EXPECT_EQ(content(), csv);
  pointTableView.fileChosen(folders.Path() / "none" / "points.csv");
  EXPECT_THAT(Trouble(), HasSubstr("can't be written"));
}

}  // namespace
}  // namespace pallomir
