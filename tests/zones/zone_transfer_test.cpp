#include "zones/zone_transfer.h"

#include <gmock/gmock.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "fakes/fake_zones_view.h"
#include "fakes/temporary_folder.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

using fakes::ReadFile;
using fakes::WriteFile;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// A list of one zone, and a file with another; work beside the loop waits until it is let go.
class ZoneTransferTest : public testing::Test {
 protected:
  ZoneTransferTest() {
    loop_.holdsWork = true;
    WriteFile(list_, WriteOne("Depot"));
    zones_->OnPageReady();
    WriteFile(file_, ExportZones(One("Yard"), ZoneFormat::kGeoJson));
  }

  static ZoneTree One(const char* name) {
    ZoneTreeBuilder builder(ZoneKind::kAlerted);
    builder.Append(1, {"", name}, Square(1, 2, 3));
    return builder.Build();
  }
  static std::string WriteOne(const char* name) {
    return "\"Alerted\"\r\n1,1,\"\",\"" + std::string(name) +
           "\",\"SMTWTFS\",\"0000\",\"0000\"\r\n1,1,2\r\n1,1,5\r\n1,4,5\r\n0,4,2\r\n";
  }
  void BeginReading() {
    transfer_->Import();
    view_.importAnswer(file_);
  }
  void BeginSaving() {
    BeginReading();
    loop_.LetWorkEnd();
    view_.importChoice(ZonesView::ImportChoice::kAdd);
  }
  std::string Told() { return box_.shown.empty() ? "" : box_.shown.back().text; }
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
      names.push_back(entry.path().filename().string());
    return names;
  }

  fakes::TemporaryFolder folder_;
  std::filesystem::path list_ = folder_.Path() / "ZoneMenus.txt";
  std::filesystem::path file_ = folder_.Path() / "more.geojson";
  fakes::FakeEventLoop loop_;
  fakes::FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  Trace trace_{[] { return 0.0; }, [](const std::string&) {}};
  fakes::FakeZonesView view_;
  std::unique_ptr<Zones> zones_ =
      std::make_unique<Zones>(view_, loop_, questions_, trace_, list_,
                              Zones::Host{[](const char*, const std::string&) {}, [] {}, {}, {}, {}});
  std::unique_ptr<ZoneTransfer> transfer_ = std::make_unique<ZoneTransfer>(view_, loop_, questions_, *zones_);
};

TEST_F(ZoneTransferTest, LongWorkIsShownAndOneFileIsOnItsWayAtATime) {
  transfer_->Export();
  BeginReading();
  EXPECT_EQ(view_.progress, "");
  loop_.Advance(300);
  EXPECT_THAT(view_.progress, StartsWith("Zones are read from " + file_.string()));
  view_.importAnswer(file_);
  view_.exportAnswer(folder_.Path() / "out.kml");
  EXPECT_EQ(loop_.held.size(), 1u);
  loop_.LetWorkEnd();
  EXPECT_EQ(view_.progress, "");
  loop_.Advance(300);
  EXPECT_EQ(view_.progress, "") << "the user is asked";
  view_.importChoice(ZonesView::ImportChoice::kAdd);
  loop_.Advance(300);
  EXPECT_THAT(view_.progress, StartsWith("The zones are saved"));
  loop_.LetWorkEnd();
  EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Depot 2:Yard");
  EXPECT_EQ(zones_->ZoneAt(2, 3), 0u);
  zones_->Undo();
  EXPECT_EQ(ReadFile(list_), WriteOne("Depot"));
}

TEST_F(ZoneTransferTest, WhatIsCancelledLeavesNothingBehind) {
  const std::vector<std::string> files = Files();
  const struct {
    const char* what;
    std::function<void()> begin;
  } cases[] = {{"while it is read", [&] { BeginReading(); }},
               {"while it is saved", [&] { BeginSaving(); }},
               {"an export", [&] {
                  transfer_->Export();
                  view_.exportAnswer(folder_.Path() / "out.kml");
                }}};
  for (const auto& c : cases) {
    c.begin();
    loop_.Advance(300);
    view_.importText.clear();
    view_.cancelProgress();
    EXPECT_EQ(view_.progress, "") << c.what;
    EXPECT_TRUE(zones_->CanChange()) << c.what;
    loop_.LetWorkEnd();
    EXPECT_EQ(view_.importText, "") << c.what;
    EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Depot") << c.what;
    EXPECT_EQ(ReadFile(list_), WriteOne("Depot")) << c.what;
    EXPECT_THAT(Files(), testing::UnorderedElementsAreArray(files)) << c.what;
    EXPECT_EQ(Told(), "") << c.what;
  }
}

TEST_F(ZoneTransferTest, NothingElseChangesTheListWhileItIsSaved) {
  BeginSaving();
  zones_->Rename(0, "Works");
  EXPECT_THAT(Told(), HasSubstr("Zones are being imported"));
  box_.AnswerIt();
  WriteFile(list_, WriteOne("Elsewhere"));
  zones_->OnPageReady();  // reads the file at other times
  loop_.LetWorkEnd();
  EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Depot 2:Yard");
  zones_->Rename(0, "Works");
  EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Works 2:Yard");
}

TEST_F(ZoneTransferTest, WhatCanNotBeSavedIsTold) {
  std::filesystem::create_directories(folder_.Path() / "ZoneMenus.txt.import1");
  BeginSaving();
  loop_.LetWorkEnd();
  EXPECT_THAT(Told(), HasSubstr("could not be saved"));
  EXPECT_TRUE(zones_->CanChange());
  EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Depot");
  BeginSaving();
  loop_.LetWorkEnd();
  EXPECT_EQ(Outline(zones_->Tree()), "Alerted 1:Depot 2:Yard") << "each import has a file of its own";
}

TEST_F(ZoneTransferTest, TheRoomsMayGoWhileWorkIsDone) {
  BeginSaving();
  transfer_.reset();
  zones_.reset();
  loop_.LetWorkEnd();
  EXPECT_EQ(ReadFile(list_), WriteOne("Depot"));
}

}  // namespace
}  // namespace pallomir
