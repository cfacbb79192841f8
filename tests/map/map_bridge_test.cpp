#include "map/map_bridge.h"

#include <gmock/gmock.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/temporary_folder.h"
#include "map/projection.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

DataPoint PointAt(double lat, double lng) {
  DataPoint point;
  point.x = LngToWorldX(DegreesToPositionUnits(lng));
  point.y = LatToWorldY(DegreesToPositionUnits(lat));
  return point;
}

/// A page that is asked for tiles of two points.
class MapBridgeTest : public testing::Test {
 protected:
  MapBridgeTest() {
    std::filesystem::create_directories(TileFolder());
    bridge_ = std::make_unique<MapBridge>(
        browser_, loop_, trace_, Folders{folders_.Path() / "app", folders_.Path(), folders_.Path() / "home"},
        "127.0.0.1:2480", view_, [this](const std::string& text) { errors_.push_back(text); }, HostOfTest());
    bridge_->Open();
  }

  MapBridge::Host HostOfTest() {
    MapBridge::Host host;
    host.isClosing = [this] { return isClosing_; };
    host.browserSize = [] { return PixelSize{1018, 700}; };
    host.drawing = [this] {
      TrackDrawing drawing;
      drawing.units.push_back(points_);
      return drawing;
    };
    host.isTopLevelAlerted = [this] { return isTopLevelAlerted_; };
    host.choices = [this] { return choices_; };
    host.viewMoved = [this] { calls_.push_back("moved"); };
    host.rebuildFailed = [](const DeleteError& error) { ADD_FAILURE() << error.description; };
    host.rebuildEnded = [] {};
    host.reached = [this](int line) { calls_.push_back("line " + std::to_string(line)); };
    host.ready = [this] { calls_.push_back("ready"); };
    host.lost = [this] { calls_.push_back("lost"); };
    host.pointerMoved = [this](ViewPoint at) {
      calls_.push_back("pointer " + std::to_string(at.x) + "," + std::to_string(at.y));
    };
    host.menuWanted = [this] { calls_.push_back("menu"); };
    host.menuWantedAt = [this](double lat, double lng) {
      calls_.push_back("menu at " + std::to_string(lat) + "," + std::to_string(lng));
    };
    host.shapeFinished = [this](const std::string& payload) { calls_.push_back("shape " + payload); };
    host.shapeCancelled = [this] { calls_.push_back("cancelled"); };
    host.shapeClosable = [this] { calls_.push_back("closable"); };
    return host;
  }

  void Command(const std::string& text) {
    browser_.beforeNavigate("http://127.0.0.1:2480/dummy/" + text);
    loop_.RunPosted();
  }

  /// The page shows its map and has had its first fit.
  void ShowData() {
    Command("S1");
    Command("M40.620000,-75.370000");
    Command("Z12");
    bridge_->FitToNewData(Box());
    loop_.Advance(0);
    browser_.writes.clear();
    calls_.clear();
  }

  /// A fit by the user, whose tiles are not drawn to the end.
  void BeginToDraw() {
    ShowData();
    bridge_->FitToData(Box());
    loop_.Tick("tmrTiles");
  }

  WorldBox Box() const { return BoxOf(points_); }

  std::filesystem::path TileFolder() const {
    return folders_.Path() / "home/Application Data/pallomir/Tiles";
  }
  std::string AnyTile() const {
    return std::filesystem::directory_iterator(TileFolder())->path().filename().string();
  }
  std::vector<std::string> WrittenFields() const {
    std::vector<std::string> fields;
    for (const auto& [field, value] : browser_.writes) fields.push_back(field);
    return fields;
  }

  fakes::TemporaryFolder folders_;
  fakes::FakeBrowser browser_;
  fakes::FakeEventLoop loop_;
  std::vector<std::string> traced_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { traced_.push_back(line); }};
  MapView view_;
  std::vector<DataPoint> points_{PointAt(40.60, -75.40), PointAt(40.62, -75.42)};
  bool isClosing_ = false;
  bool isTopLevelAlerted_ = false;
  PageChoices choices_;
  std::vector<std::string> errors_;
  std::vector<std::string> calls_;
  std::unique_ptr<MapBridge> bridge_;
};

TEST_F(MapBridgeTest, CommandsOfThePageBecomeCalls) {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"C", {"menu"}},
      {"F0024300000-045000000", {"menu at 40.500000,-75.000000"}},
      {"m00012000340024000000-045000000012", {"pointer 12,34"}},
      {"m00012000340024000001-045000000012", {}},
      {"m00013000340024000002-045000000013", {"pointer 13,34"}},
      {"M40.000000,-75.000000", {"moved"}},
      {"Z12", {"moved"}},
      {"Z12", {}},
      {"zF1.0~2.0~", {"shape 1.0~2.0~"}},
      {"zC", {"cancelled"}},
      {"z3", {"closable"}},
      {"G%41%20%20", {}},  // nobody listens
      {"S17", {"line 17"}},
      {"S18", {}},
      {"S0", {}},
      {"q", {}},
  };
  for (const auto& [command, calls] : rows) {
    calls_.clear();
    Command(command);
    EXPECT_EQ(calls_, calls) << command;
  }
  const auto& page = bridge_->Page();
  EXPECT_EQ(page.RightClickX, 313174699);
  EXPECT_THAT((std::array{page.LastMouseLat, page.LastMouseLng, page.LastMouseZoom}),
              ElementsAre(24000002, -45000000, 13));
  EXPECT_THAT(browser_.writes, IsEmpty());
  EXPECT_THAT(errors_, IsEmpty());
  Command("zq");
  EXPECT_THAT(errors_, ElementsAre("System Error 3907"));
}

TEST_F(MapBridgeTest, CommandsWhoseNumbersAreNoneAreOnlyTraced) {
  calls_.clear();
  Command("Mnowhere," + std::string(1000, 'x'));
  Command("Zx");
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(traced_.back(), testing::EndsWith("its numbers are none: Zx"));
  EXPECT_LT(traced_[traced_.size() - 2].size(), 200u);
}

TEST_F(MapBridgeTest, OnlyCommandNavigationsAreCancelled) {
  EXPECT_FALSE(browser_.beforeNavigate("http://127.0.0.1:2480/fullscreen/index.php?X=1&Y=1"));
  EXPECT_FALSE(browser_.beforeNavigate("http://127.0.0.1:2480/dummy"));
  EXPECT_FALSE(browser_.beforeNavigate("https://elsewhere/dummy/Z9"));
  EXPECT_TRUE(browser_.beforeNavigate("http://127.0.0.1:2480/dummy/Z9"));
  EXPECT_EQ(view_.TileZoom, -1) << "a command runs from the event loop";
  loop_.RunPosted();
  EXPECT_EQ(view_.TileZoom, 9);
  EXPECT_TRUE(browser_.beforeNavigate("http://127.0.0.1:2480/dummy/Z10"));
  isClosing_ = true;
  loop_.RunPosted();
  EXPECT_EQ(view_.TileZoom, 9);
}

TEST_F(MapBridgeTest, TilesAreAnsweredByNameOrByABlank) {
  ShowData();
  const std::string name = AnyTile();
  Command("TT" + name.substr(4, 14));
  EXPECT_EQ(browser_.Written("TxtTT").back(), (TileFolder() / name).string());
  const std::string blank = (folders_.Path() / "app/blank_x.png").string();
  for (const char* question :
       {"TT0C000000000000", "TTXX000000000000", "TT", "TTFF000000000000", "TT0C../../x"}) {
    Command(question);
    EXPECT_EQ(browser_.Written("TxtTT").back(), blank) << question;
  }
  EXPECT_EQ(view_.TileZoom, 12) << "a bad zoom changes nothing";
  for (const char* colour : {"Grn", "Red"}) {
    Command("TZ0C000000000000");
    EXPECT_EQ(browser_.Written("TxtTZ").back(), (folders_.Path() / "app" / colour).string() + ".png");
    isTopLevelAlerted_ = true;
  }
  Command("TZ99000000000000");
  EXPECT_EQ(browser_.Written("TxtTZ").back(), blank);
  const std::size_t writes = browser_.writes.size();
  Command("TX0C000000000000");
  EXPECT_EQ(browser_.writes.size(), writes) << "another kind has no answer";
}

TEST_F(MapBridgeTest, ATileQuestionAtANewZoomRebuildsFirst) {
  ShowData();
  Command("TT0D000000000000");
  EXPECT_EQ(view_.TileZoom, 13);
  EXPECT_THAT(browser_.writes, IsEmpty());
  loop_.Advance(0);
  EXPECT_THAT(WrittenFields(), ElementsAre("TxtR", "TxtTT"));
}

TEST_F(MapBridgeTest, OfManyQuestionsThatWaitTheLastOnesAreAnswered) {
  BeginToDraw();
  for (int i = 10; i < 75; ++i) Command("TT0C0000000000" + std::to_string(i));
  loop_.Advance(0);
  EXPECT_THAT(browser_.Written("TxtTT"), SizeIs(64));
}

TEST_F(MapBridgeTest, AFitIsThatOfItsBeginUnlessABoxIsWantedMeanwhile) {
  for (const bool isBoxWanted : {false, true}) {
    BeginToDraw();
    if (isBoxWanted) bridge_->ZoomTo(BoxOfDegrees({30, 31, -80, -79}));
    Command("M10.000000,20.000000");
    EXPECT_THAT(browser_.writes, IsEmpty());
    loop_.Advance(0);
    EXPECT_THAT(WrittenFields(), ElementsAre("TxtR", "TxtF"));
    EXPECT_THAT(browser_.Written("TxtF")[0], HasSubstr(isBoxWanted ? "+030.5" : "+040.61"));
  }
  bridge_->ZoomTo(BoxOfDegrees({50, 51, -80, -79}));
  EXPECT_THAT(browser_.Written("TxtF"), SizeIs(2)) << "at once where nothing is drawn";
}

TEST_F(MapBridgeTest, APageThatComesMeanwhileGetsTheFitAndNoAnswersOfTheOneBeforeIt) {
  BeginToDraw();
  Command("TT0C000000000000");
  browser_.pageLost("test");
  Command("S1");
  loop_.Advance(0);
  EXPECT_THAT(WrittenFields(), ElementsAre("TxtR", "TxtL"));
}

TEST_F(MapBridgeTest, BeforeTheFirstDataFitsAreDrawnAndNotSent) {
  Command("S1");
  Command("Z12");
  bridge_->FitToData(DefaultBox());
  loop_.Advance(0);
  EXPECT_THAT(WrittenFields(), ElementsAre("TxtR"));
  EXPECT_FALSE(bridge_->MayFit());
  bridge_->FitToNewData(Box());
  EXPECT_TRUE(bridge_->MayFit());
  bridge_->ZoomTo(BoxOfDegrees({30, 31, -80, -79}));
  loop_.Advance(0);
  EXPECT_THAT(WrittenFields(), ElementsAre("TxtR", "TxtR", "TxtL"));
  EXPECT_THAT(browser_.Written("TxtL")[0], HasSubstr("+030.5")) << "the first fit, of the newer box";
}

TEST_F(MapBridgeTest, ANewPageIsToldOnlyWhatItHasOtherwise) {
  Command("S99");
  loop_.Advance(499);
  EXPECT_THAT(calls_, IsEmpty());
  loop_.Advance(1);
  EXPECT_THAT(calls_, ElementsAre("ready"));
  EXPECT_THAT(browser_.writes, IsEmpty());
  choices_ = {false, false, false, "Terrain", true, true};
  Command("S99");
  loop_.Advance(500);
  EXPECT_THAT(testing::PrintToString(browser_.writes),
              R"({ ("TxtM", "F"), ("TxtT", "F"), ("TxtZ", "F"), ("TxtMT", "Terrain"), ("txtPn", "True"), )"
              R"(("TxtSV", "True") })");
}

}  // namespace
}  // namespace pallomir
