#include <gmock/gmock.h>

#include "commands/command_table.h"
#include "fakes/client_harness.h"

namespace pallomir {
namespace {

using fakes::ReadFile;
using fakes::WriteFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kDepotAndYard[] =
    "\"Alerted\"\r\n"
    "1,1,\"\",\"R&D\",\"SMTWTFS\",\"0000\",\"0000\"\r\n1,40,-75\r\n1,41,-75\r\n1,41,-74\r\n0,40,-74\r\n"
    "1,1,\"\",\"Yard\",\"SMTWTFS\",\"0000\",\"0000\"\r\n1,10,5\r\n1,11,5\r\n0,11,6\r\n";

// The client with zones in its file, up to the page.
class ZoneJointsTest : public testing::Test, public fakes::ClientHarness {
 protected:
  void Start(const std::string& file = kDepotAndYard) {
    UseUnits("X0123456789ABFirst~");
    std::filesystem::create_directory(File().parent_path());
    WriteFile(File(), file);
    client->Load();
  }
  void ReportReady() {
    Command("S99");
    loop.Advance(500);
  }
  std::filesystem::path File() const { return folders.Path() / "data" / "pallomir" / "ZoneMenus.txt"; }

  MenuItem& Menu(enum Command command, int index = 0) { return client->Menus().At(command, index); }
  void Choose(enum Command command, int index = 0) {
    MenuItem item;
    item.command = command;
    item.index = index;
    client->MenuChosen(item);
  }
  /// What the Zones menu has behind its fixed entries.
  std::vector<std::string> Offered() {
    std::vector<std::string> offered;
    const auto& children = Menu(Command::kZoneMenu).children;
    for (auto entry = children.rbegin(); entry->identifier != 0; ++entry)
      offered.insert(offered.begin(), entry->caption);
    return offered;
  }
  /// The user's choice, and all that it begins.
  template <class Choice, class... Chosen>
  void Answer(const Choice& choice, Chosen... chosen) {
    choice(chosen...);
    loop.Advance(0);
  }
  std::string LastWrite() const { return browser.writes.back().first + "=" + browser.writes.back().second; }
  static std::string RightClickAt(double lat, double lng) {
    char text[40];
    std::snprintf(text, sizeof text, "F%010d%010d", static_cast<int>(lat * 600000),
                  static_cast<int>(lng * 600000));
    return text;
  }
};

TEST_F(ZoneJointsTest, TheMenuShowsTheFileAtOnceAndThePageHearsOfItWhenItIsReady) {
  Start();
  EXPECT_EQ(Menu(Command::kAddZone).caption, "Add Alerted Zone 3");
  Choose(Command::kAddZone);
  EXPECT_FALSE(zonesView.answer) << "nothing to draw on";
  EXPECT_EQ(Trouble(), "Zones can be drawn when the map is there.");
  Choose(Command::kSwapZoneKind);
  EXPECT_THAT(ReadFile(File()), HasSubstr("\"Non-Alert\"\r\n1,1,\"\",\"R&D\"")) << "and nothing is lost";
  ReportReady();
  EXPECT_THAT(browser.Written("TxtZL"), testing::SizeIs(3));
  EXPECT_THAT(browser.Written("TxtZD"), ElementsAre("1 R&D\n2 Yard\n"));
}

TEST_F(ZoneJointsTest, TheDemoHasItsOwnZonesAfreshEveryTime) {
  std::filesystem::create_directory(File().parent_path());
  WriteFile(File(), kDepotAndYard);
  WriteFile(File().parent_path() / "ZoneMenus_Demo.txt", "\"Non-Alert\"\r\n");
  client->Load();
  EXPECT_EQ(Menu(Command::kZoneHeader).caption, "( No Alerted Zones Defined)");
  Choose(Command::kSwapZoneKind);
  EXPECT_EQ(ReadFile(File().parent_path() / "ZoneMenus_Demo.txt"), "\"Non-Alert\"\r\n");
  EXPECT_EQ(ReadFile(File()), kDepotAndYard);
}

TEST_F(ZoneJointsTest, AShapeGoesToThePageAndBack) {
  Start();
  ReportReady();
  Choose(Command::kAddSubzone, 0);
  zonesView.Press("Edit Shape", "Bay");
  EXPECT_EQ(LastWrite(), "TxtZN= ");
  EXPECT_FALSE(Menu(Command::kFinishZone).visible || Menu(Command::kAddZone).enabled);
  Command("z3");
  EXPECT_TRUE(Menu(Command::kFinishZone).visible);
  Choose(Command::kFinishZone);
  EXPECT_EQ(LastWrite(), "TxtZF= ");
  Command("zF40.1~-74.9~40.2~-74.9~40.2~-74.8~");
  EXPECT_THAT(ReadFile(File()), HasSubstr("1,2,\"\",\"Bay\""));
  EXPECT_TRUE(Menu(Command::kAddZone).enabled);
  const std::string saved = ReadFile(File());
  Choose(Command::kAddZone);
  zonesView.Press("Edit Shape", "Gate");
  Command("zC");
  EXPECT_EQ(Trouble(), "Zone Edit Canceled");
  box.AnswerIt();
  Command("zX");
  EXPECT_EQ(Trouble(), "System Error 3907");
  Choose(Command::kUndoZones);
  EXPECT_EQ(ReadFile(File()), kDepotAndYard);
  Choose(Command::kRedoZones);
  EXPECT_EQ(ReadFile(File()), saved);
}

TEST_F(ZoneJointsTest, KeysDrawWhileAShapeIsDrawn) {
  using namespace special_key;
  Start();
  ReportReady();
  struct Row {
    int modifiers;
    char key;
    const char* write;
  };
  const Row rows[] = {{kNoModifier, kRight, "TxtZX=+0010+0000"},
                      {kShift, kUp, "TxtZX=+0000-0001"},
                      {kCtrl, kLeft, "TxtZX=-0050+0000"},
                      {kNoModifier, kDown, "TxtZX=+0000+0010"},
                      {kNoModifier, kPageUp, "TxtZX=P"},
                      {kNoModifier, kPageDown, "TxtZX=N"},
                      {kNoModifier, kEnter, "TxtZV= "},
                      {kAlt, kEnter, "TxtZV=A"},
                      {kCtrl, 'Z', "TxtZU= "},
                      {kNoModifier, kEscape, "TxtZC= "}};
  for (const Row& row : rows) {
    if (row.key == 'Z') continue;
    EXPECT_FALSE(client->KeyDown(row.modifiers, row.key)) << row.write;
  }
  Choose(Command::kAddZone);
  zonesView.Press("Edit Shape");
  beeper.beeps = 0;
  for (const Row& row : rows) {
    EXPECT_TRUE(client->KeyDown(row.modifiers, row.key)) << row.write;
    EXPECT_EQ(LastWrite(), row.write);
  }
  EXPECT_EQ(beeper.beeps, 0);
  EXPECT_TRUE(client->KeyDown(kNoModifier, 'S')) << "the others stay";
  client->RoomsOfWindow().focus.HoldOff(true);
  EXPECT_FALSE(client->KeyDown(kNoModifier, kEnter)) << "it is the caption line's";
}

TEST_F(ZoneJointsTest, ARightClickOffersTheZoneThereUntilTheMenuIsGone) {
  Start();
  ReportReady();
  const auto offer = ElementsAre("-", "&Delete R&&D", "&Edit R&&D", "&Zoom To R&&D", "&Been To R&&D ?");
  const auto inZone = RightClickAt(40.5, -74.5);
  const struct {
    const char* what;
    std::function<void()> act;
  } ends[] = {
      {"a click elsewhere", [&] { Command(RightClickAt(50, -74.5)); }},
      {"a click on no place", [&] { Command("C"); }},
      {"closing", [&] { client->Menus().closed(); }},
      {"the button", [&] { client->MenuButtonClicked(); }},
      {"another list", [&] { Choose(Command::kSwapZoneKind); }},
      {"a page that is ready anew", [&] { ReportReady(); }},
  };
  for (const auto& end : ends) {
    Command(inZone);
    Command(inZone);
    EXPECT_THAT(Offered(), offer) << end.what;
    end.act();
    EXPECT_THAT(Offered(), IsEmpty()) << end.what;
  }
  Command(inZone);
  Choose(Command::kDeleteZone, 0);
  box.AnswerIt({true, ""});
  EXPECT_THAT(ReadFile(File()), Not(HasSubstr("R&D")));
}

TEST(ZoneTiles, ThoseThatAreNotThereHaveTheColourOfTheTopLevel) {
  for (const auto& [kind, picture] : {std::pair("Alerted", "Red.png"), std::pair("Non-Alert", "Grn.png")}) {
    fakes::ClientHarness one;
    one.UseUnits("X0123456789ABFirst~");
    std::filesystem::create_directory(one.folders.Path() / "data" / "pallomir");
    WriteFile(one.folders.Path() / "data" / "pallomir" / "ZoneMenus.txt",
              "\"" + std::string(kind) + "\"\r\n");
    one.client->Load();
    one.Command("Z12");
    one.loop.Advance(10);
    one.Command("TZ0C000000000000");
    EXPECT_THAT(one.browser.writes.back().second, testing::EndsWith(picture));
  }
}

TEST_F(ZoneJointsTest, ZonesLeaveAndEnterByFiles) {
  Start();
  const auto file = folders.Path() / "zones.kml";
  Choose(Command::kExportZones);
  Answer(zonesView.exportAnswer, folders.Path() / "zones.txt");
  EXPECT_THAT(Trouble(), HasSubstr("ends in .geojson"));
  box.AnswerIt();
  Answer(zonesView.exportAnswer, file);
  EXPECT_EQ(Trouble(), "2 zones exported to " + file.string() + ".");
  box.AnswerIt();
  const std::string exported = ReadFile(file);
  Choose(Command::kSwapZoneKind);
  Answer(zonesView.exportAnswer, file);
  EXPECT_THAT(Trouble(), HasSubstr("exists already"));
  box.AnswerIt({false, ""});
  EXPECT_EQ(ReadFile(file), exported);

  Choose(Command::kImportZones);
  Answer(zonesView.importAnswer, file);
  EXPECT_THAT(zonesView.importText, HasSubstr("The file has 2 zones. Add to the 2 zones in use"));
  EXPECT_THAT(zonesView.importText, HasSubstr("If they are added they become \"Non-Alert\"."));
  Answer(zonesView.importChoice, ZonesView::ImportChoice::kCancel);
  Answer(zonesView.importChoice, ZonesView::ImportChoice::kAdd);
  EXPECT_EQ(Menu(Command::kAddZone).caption, "Add Non-Alert Zone 5");
  Answer(zonesView.importChoice, ZonesView::ImportChoice::kReplace);
  EXPECT_EQ(ReadFile(File()), kDepotAndYard) << "with the kind that the file names";

  Choose(Command::kSwapZoneKind);
  WriteFile(folders.Path() / "one.json",
            R"({"type":"Polygon","coordinates":[[[5,10],[6,10],[6,11],[5,10]]]})");
  Answer(zonesView.importAnswer, folders.Path() / "one.json");
  Answer(zonesView.importChoice, ZonesView::ImportChoice::kReplace);
  EXPECT_EQ(Menu(Command::kAddZone).caption, "Add Non-Alert Zone 2") << "with the kind in use";
  for (const char* name : {"none.kml", "zones.txt"}) {
    Answer(zonesView.importAnswer, folders.Path() / name);
    EXPECT_THAT(Trouble(), testing::AnyOf(HasSubstr("can't be read"), HasSubstr("end in .geojson")));
    box.AnswerIt();
  }
}

TEST_F(ZoneJointsTest, APointerAtRestIsToldItsZone) {
  Start(std::string(kDepotAndYard) +
        "1,2,\"\",\"Bay\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
        "1,10.5,5\r\n1,11,5\r\n0,11,5.9\r\n");
  ReportReady();
  const auto moveTo = [&](double lat, double lng) {
    char text[60];
    std::snprintf(text, sizeof text, "m0010000100%010d%010d012", static_cast<int>(lat * 600000),
                  static_cast<int>(lng * 600000));
    Command(text);
    Command(text);  // every second one counts
  };
  moveTo(10.9, 5.05);
  loop.Advance(500);
  EXPECT_EQ(zonesView.path, "");
  loop.Advance(200);
  EXPECT_EQ(zonesView.path, "Yard › Bay");
  moveTo(10.1, 5.05);
  EXPECT_EQ(zonesView.path, "") << "it moves";
  loop.Advance(700);
  client->RoomsOfWindow().marks.HidePointInfos();
  EXPECT_EQ(zonesView.path, "") << "it left";
  for (const auto& [lat, lng] : {std::pair(50.0, 5.0), {10.1, 5.05}}) {
    moveTo(lat, lng);
    if (lat == 10.1) {
      Choose(Command::kAddZone);
      zonesView.Press("Edit Shape");
      moveTo(lat, lng);
    }
    loop.Advance(700);
    EXPECT_EQ(zonesView.path, "") << "outside, or while drawing";
  }
}

TEST_F(ZoneJointsTest, TheListOfZonesActs) {
  Start();
  ReportReady();
  Choose(Command::kZoneList);
  ASSERT_TRUE(zonesView.list);
  EXPECT_EQ(zonesView.list->Text(1, ZoneListModel::kZone), "2 Yard");
  EXPECT_THAT(zonesView.list->Text(1, ZoneListModel::kArea), testing::EndsWith("sq mi"));
  Choose(Command::kUnitOfMeasureChoice, 1);
  EXPECT_THAT(zonesView.list->Text(1, ZoneListModel::kArea), testing::EndsWith("km²"));
  zonesView.listRefreshes = 0;
  zonesView.listActions.rename(1, "Court");
  EXPECT_GT(zonesView.listRefreshes, 0);
  EXPECT_THAT(ReadFile(File()), HasSubstr("\"Court\""));
  zonesView.listActions.zoom(1);
  EXPECT_THAT(LastWrite(), testing::AllOf(testing::StartsWith("TxtF="), testing::EndsWith("+005.500000")));
  zonesView.listActions.remove(1);
  EXPECT_TRUE(box.IsOpen());
}

TEST_F(ZoneJointsTest, ALostPageEndsTheDrawing) {
  Start();
  ReportReady();
  Choose(Command::kEditZone, 1);
  zonesView.Press("Edit Shape", "Court");
  EXPECT_EQ(LastWrite(), "TxtZE=1");
  browser.pageLost("its process ended");
  EXPECT_FALSE(Menu(Command::kCancelZone).visible);
}

TEST_F(ZoneJointsTest, AnIllegalDepthEndsTheProgramAndLeavesTheFile) {
  const std::string file = std::string(kDepotAndYard) + "1,3,\"\",\"Deep\",\"SMTWTFS\",\"0000\",\"0000\"\r\n";
  Start(file);
  ReportReady();
  EXPECT_EQ(Trouble(), "Internal Error 9703: NestingLevel = 3");
  EXPECT_EQ(window.closeWanted, 0);
  box.AnswerIt();
  EXPECT_EQ(window.closeWanted, 1);
  EXPECT_EQ(ReadFile(File()), file);
}

}  // namespace
}  // namespace pallomir
