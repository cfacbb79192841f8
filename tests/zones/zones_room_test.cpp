#include <gmock/gmock.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/fake_zones_view.h"
#include "fakes/temporary_folder.h"
#include "zones/zone_file.h"
#include "zones/zone_testing.h"
#include "zones/zones.h"

namespace pallomir {
namespace {

using fakes::ReadFile;
using fakes::WriteFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kDays = ",\"SMTWTFS\",\"0000\",\"0000\"\r\n";
const std::string kCorners = "1,40,-75\r\n1,41,-75\r\n0,41,-74\r\n";
const std::string kDepot = "\"Alerted\"\r\n1,1,\"s\",\"Depot\"" + kDays + kCorners;
const std::string kDepotAndYard = kDepot + "1,1,\"t\",\"Yard\"" + kDays + "1,10,5\r\n1,11,5\r\n0,11,6\r\n";

class ZonesTest : public testing::Test {
 protected:
  void Load(const std::string& file) {
    WriteFile(path_, file);
    zones_.OnPageReady();
    Settle();
  }
  void Settle() {
    loop_.Advance(0);
    writes_.clear();
  }
  std::string OnDisk() { return Outline(ReadZones(ReadFile(path_)).tree); }
  std::string Told() { return box_.shown.empty() ? "" : box_.shown.back().text; }

  fakes::TemporaryFolder folder_;
  std::filesystem::path path_ = folder_.Path() / "ZoneMenus.txt";
  fakes::FakeEventLoop loop_;
  fakes::FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  Trace trace_{[] { return 0.0; }, [](const std::string&) {}};
  fakes::FakeZonesView view_;
  std::vector<std::string> writes_;
  std::vector<std::string> done_;
  Zones zones_{
      view_,
      loop_,
      questions_,
      trace_,
      path_,
      {.write = [this](const char* field,
                       const std::string& text) { writes_.push_back(std::string(field) + "=" + text); },
       .changed = [] {},
       .zoomTo = [this](const ZoneBounds& box) { done_.push_back("zoom " + std::to_string(box.maxLat)); },
       .beenIn = [this](ZoneOrdinal zone) { done_.push_back("been " + std::to_string(zone)); },
       .endProgram = [this] { done_.push_back("end"); }}};
};

TEST_F(ZonesTest, ThePageIsToldOfAllZonesInOrderAndThenOfTheirNames) {
  WriteFile(path_, kDepotAndYard);
  zones_.OnPageReady();
  EXPECT_THAT(writes_, ElementsAre("TxtZL=*", HasSubstr("TxtZL=TT 040.000000-075"), HasSubstr("TxtZL=TT 010"),
                                   "TxtZD=1 Depot\n2 Yard\n"));
  // Far more than one part takes.
  std::string many = "\"Alerted\"\r\n";
  for (int i = 0; i < 1100; ++i) many += "1,1,\"\",\"Z\"" + kDays + kCorners;
  Load(many);
  zones_.LoadZones();
  EXPECT_LT(writes_.size(), 100u);
  zones_.Run(ZoneOperation::kMod, 1025);
  view_.Press("Edit Shape");
  ASSERT_EQ(writes_.size(), 1u + 1100 + 6 + 1) << "the rest of the list goes first";
  EXPECT_EQ(writes_.back(), "TxtZE=1025");
  std::string names;
  for (int i = 1001; i <= 1100; ++i) names += std::to_string(i) + " Z\n";
  EXPECT_EQ(writes_[1106], "TxtZD=" + names);
}

TEST_F(ZonesTest, ANewZoneIsNamedDrawnAndSaved) {
  Load(kDepotAndYard);
  zones_.Add();
  EXPECT_EQ(view_.asked, "Add");
  EXPECT_EQ(view_.options.Description, kZoneNamePlaceholder);
  view_.Press("Edit Shape", "Gate");
  EXPECT_EQ(zones_.PopupEntries(), (ZonePopupEntries{.cancel = true}));
  EXPECT_THAT(writes_, ElementsAre("TxtZN= "));
  zones_.OnShapeClosable();
  EXPECT_EQ(zones_.PopupEntries(), (ZonePopupEntries{true, true, true}));
  zones_.Add();  // not while one is drawn
  zones_.SwapTopLevelKind();
  EXPECT_FALSE(view_.answer);

  for (const char* refused : {"", "1~2~", "1~2~3~4~", "x~1~2~3~4~5~6~7~"}) zones_.OnShapeFinished(refused);
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 2:Yard");
  EXPECT_TRUE(zones_.IsDrawing());
  Settle();
  zones_.OnShapeFinished("50~1~51~1~51~2~");
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 2:Yard 3:Gate");
  EXPECT_EQ(zones_.Tree().At(2).options.Spare, "t");
  EXPECT_EQ(zones_.PopupEntries(), ZonePopupEntries());
  EXPECT_EQ(writes_.front(), "TxtZL=*");
  zones_.Undo();
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 2:Yard");
  zones_.Redo();
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 2:Yard 3:Gate");
}

TEST_F(ZonesTest, SubzonesAndChanges) {
  Load(kDepot);
  zones_.Run(ZoneOperation::kAdd, 0);
  view_.Press("Edit Shape", "Bay");
  zones_.OnShapeFinished("40.1~-74.9~40.2~-74.9~41.5~-74.8~");
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 1.1:Bay");
  EXPECT_THAT(Told(), HasSubstr("Zone 1.1 (Bay) reaches beyond zone 1 (Depot)"));

  Settle();
  zones_.Run(ZoneOperation::kMod, 0);
  EXPECT_EQ(view_.options.Description, "Depot");
  view_.Press("Edit Shape", "Works");
  EXPECT_THAT(writes_, ElementsAre("TxtZE=0"));
  EXPECT_EQ(zones_.PopupEntries(), (ZonePopupEntries{true, true, true}));
  zones_.Undo();
  EXPECT_EQ(OnDisk(), "Alerted 1:Depot 1.1:Bay") << "not while a shape is drawn";
  zones_.OnShapeFinished("");  // the shape stays
  EXPECT_EQ(OnDisk(), "Alerted 1:Works 1.1:Bay");
  EXPECT_EQ(zones_.Tree().At(0).vertexCount, 3u);
  zones_.Rename(1, "The \"new\" bay");
  EXPECT_EQ(OnDisk(), "Alerted 1:Works 1.1:The 'new' bay");
  zones_.Run(ZoneOperation::kZoom, 0);
  zones_.Run(ZoneOperation::kBeen, 1);
  EXPECT_THAT(done_, ElementsAre("zoom 41.000000", "been 1"));
  EXPECT_EQ(zones_.PathText(1), "Works\r\nThe 'new' bay\r\n");
  EXPECT_EQ(zones_.ZoneAt(40.5, -74.9), 0u);
}

TEST_F(ZonesTest, OptionsThatAreClosedOtherwiseChangeNothing) {
  Load(kDepot);
  constexpr ZoneOperation kAdd = ZoneOperation::kAdd, kMod = ZoneOperation::kMod;
  const std::tuple<ZoneOperation, ZoneOrdinal, const char*, const char*> cases[] = {
      {kAdd, ZoneTree::kNone, "Cancel", "Zone add canceled"},
      {kAdd, ZoneTree::kNone, "", "Zone add canceled"},
      {kAdd, ZoneTree::kNone, "?", "Internal error 2778"},
      {kAdd, 0, "Cancel", "Zone add canceled"},
      {kAdd, 0, "?", "Internal Error 9336"},
      {kMod, 0, "", "Zone edit canceled"},
      {kMod, 0, "?", "Internal Error 9337"}};
  for (const auto& [operation, zone, button, told] : cases) {
    zone == ZoneTree::kNone ? zones_.Add() : zones_.Run(operation, zone);
    view_.Press(button);
    EXPECT_EQ(Told(), told);
    EXPECT_FALSE(zones_.IsDrawing());
    box_.AnswerIt({true, ""});
  }
  EXPECT_THAT(writes_, IsEmpty());
  EXPECT_EQ(ReadFile(path_), kDepot);
}

TEST_F(ZonesTest, DeletingIsAskedFor) {
  Load(kDepotAndYard);
  zones_.Run(ZoneOperation::kDel, 0);
  EXPECT_EQ(Told(), "Are you sure you want to delete this (sub)zone and all subzones under it?");
  box_.AnswerIt({false, ""});
  EXPECT_EQ(Told(), "Delete canceled");
  box_.AnswerIt({true, ""});
  EXPECT_EQ(ReadFile(path_), kDepotAndYard);
  zones_.Run(ZoneOperation::kDel, 1);
  zones_.Run(ZoneOperation::kDel, 0);  // in the list of zones, beside the box: the last one is meant
  box_.AnswerIt({true, ""});
  EXPECT_EQ(OnDisk(), "Alerted 1:Yard");
  zones_.SwapTopLevelKind();
  zones_.DeleteAll();
  EXPECT_EQ(Told(), "Are you sure you want to delete all zones and their subzones?");
  box_.AnswerIt({true, ""});
  EXPECT_EQ(ReadFile(path_), "\"Alerted\"\r\n");
}

TEST_F(ZonesTest, ADeepZonesNameIsNoneOfTheTopLevel) {
  std::string deep = "\"Alerted\"\r\n";
  for (int depth = 1; depth <= 101; ++depth)
    deep += "1," + std::to_string(depth) + ",\"\",\"Z\"" + kDays + kCorners;
  WriteFile(path_, deep);
  zones_.OnPageReady();
  loop_.Advance(0);
  EXPECT_THAT(writes_.back(), testing::EndsWith(".1 Z\n0.1 Z\n0.1 Z\n"));
}

TEST_F(ZonesTest, AnAnswerThatComesAfterTheListHasChangedActsOnTheSameZoneOnly) {
  Load(kDepotAndYard);
  zones_.Run(ZoneOperation::kDel, 0);
  WriteFile(path_, "\"Alerted\"\r\n1,1,\"t\",\"Yard\"" + kDays + kCorners);
  zones_.LoadZones();
  box_.AnswerIt({true, ""});
  EXPECT_EQ(OnDisk(), "Alerted 1:Yard");
  EXPECT_THAT(Told(), HasSubstr("zone 1 is no longer"));
  box_.AnswerIt({true, ""});

  zones_.Run(ZoneOperation::kMod, 0);
  zones_.LoadZones();  // the same zone, read anew
  view_.Press("Edit Shape");
  EXPECT_TRUE(zones_.IsDrawing());
}

TEST_F(ZonesTest, WhatThePageSendsUnaskedChangesNothing) {
  Load(kDepot);
  zones_.OnShapeFinished("50~1~51~1~51~2~");
  zones_.OnShapeClosable();
  EXPECT_EQ(ReadFile(path_), kDepot);
  EXPECT_EQ(zones_.PopupEntries(), ZonePopupEntries());
  EXPECT_THAT(writes_, IsEmpty());
  zones_.FinishShape();
  zones_.CancelShape();
  EXPECT_THAT(writes_, IsEmpty());
  zones_.OnShapeCancelled();
  EXPECT_EQ(Told(), "Zone Edit Canceled");
  EXPECT_EQ(writes_.front(), "TxtZL=*");
}

TEST_F(ZonesTest, ALostPageEndsTheDrawing) {
  Load(kDepot);
  zones_.Add();
  view_.Press("Edit Shape");
  zones_.CancelShape();
  zones_.OnPageLost();
  zones_.OnPageReady();
  EXPECT_FALSE(zones_.IsDrawing());
  EXPECT_EQ(box_.shown.size(), 1u) << "told once";
  zones_.OnShapeFinished("50~1~51~1~51~2~");
  EXPECT_EQ(ReadFile(path_), kDepot);
}

TEST_F(ZonesTest, WhatCanNotBeStoredStaysAsItWas) {
  Load(kDepot);
  zones_.Add();
  view_.Press("Edit Shape");
  std::filesystem::remove(path_);
  std::filesystem::create_directories(path_ / "in the way");
  Settle();
  zones_.OnShapeFinished("50~1~51~1~51~2~");
  EXPECT_THAT(Told(), HasSubstr("could not be saved"));
  EXPECT_TRUE(zones_.IsDrawing());
  EXPECT_EQ(Outline(zones_.Tree()), "Alerted 1:Depot");
  EXPECT_THAT(writes_, IsEmpty()) << "the page keeps what was drawn";
}

TEST_F(ZonesTest, AnIllegalDepthEndsTheProgramWhenItsMessageIsClosed) {
  Load(kDepot);
  WriteFile(path_, kDepot + "1,3,\"\",\"Deep\"" + kDays + kCorners);
  zones_.LoadZones();
  EXPECT_EQ(Told(), "Internal Error 9703: NestingLevel = 3");
  EXPECT_THAT(writes_, IsEmpty());
  EXPECT_THAT(done_, IsEmpty());
  box_.AnswerIt({true, ""});
  EXPECT_THAT(done_, ElementsAre("end"));
}

}  // namespace
}  // namespace pallomir
