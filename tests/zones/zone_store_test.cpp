#include "zones/zone_store.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "fakes/temporary_folder.h"
#include "zones/zone_edits.h"
#include "zones/zone_file.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

namespace fs = std::filesystem;
using fakes::ReadFile;
using fakes::WriteFile;
using testing::HasSubstr;

const std::string kNone = "\"Alerted\"\r\n";
const std::string kYard =
    kNone + "1,1,\"\",\"Yard\",\"SMTWTFS\",\"0000\",\"0000\"\r\n1,40,-75\r\n1,41,-75\r\n0,41,-74\r\n";

class ZoneStoreTest : public testing::Test {
 protected:
  ZoneTree WithOneMore(const char* name) {
    return WithZoneAdded(store_.Tree(), ZoneTree::kNone, {{"", name}, Square(50, 10, 1)});
  }
  std::string OutlineNow() { return Outline(store_.Tree()); }

  fakes::TemporaryFolder folder_;
  fs::path file_ = folder_.Path() / "ZoneMenus.txt";
  ZoneStore store_{file_};
};

TEST_F(ZoneStoreTest, AMissingFileIsMadeAndReadingWritesNothingElse) {
  EXPECT_EQ(store_.Load().message, "");
  EXPECT_EQ(ReadFile(file_), kNone);
  WriteFile(file_, "\"Alerted\"\n\n");
  store_.Load();
  EXPECT_EQ(ReadFile(file_), "\"Alerted\"\n\n");
}

TEST_F(ZoneStoreTest, ChangesAreOnDiskAndCanBeUndone) {
  WriteFile(file_, kYard);
  store_.Load();
  EXPECT_TRUE(store_.Projected().AlertPosition(40.5, -74.9).isAlert);
  EXPECT_EQ(store_.Save(WithOneMore("Gate")), "");
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard 2:Gate");
  EXPECT_EQ(ReadZones(ReadFile(file_)).tree, store_.Tree());
  EXPECT_EQ(store_.Projected().AlertPosition(50.5, 10.5).deepest, 1u);

  EXPECT_EQ(store_.DeleteAll(), "");
  EXPECT_EQ(ReadFile(file_), kNone);
  EXPECT_EQ(Outline(ReadZones(ReadFile(folder_.Path() / "ZoneMenus.txt.deleted")).tree),
            "Alerted 1:Yard 2:Gate");
  EXPECT_EQ(store_.Undo(), "");
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard 2:Gate");
  EXPECT_EQ(store_.Undo(), "");
  EXPECT_EQ(ReadFile(file_), kYard);
  EXPECT_FALSE(store_.CanUndo());
  EXPECT_EQ(store_.Redo(), "");
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard 2:Gate");
  EXPECT_TRUE(store_.CanRedo());
  EXPECT_EQ(store_.Save(WithKindSwapped(store_.Tree())), "");
  EXPECT_FALSE(store_.CanRedo());
  EXPECT_EQ(OutlineNow(), "Non-Alert 1:Yard 2:Gate");
}

TEST_F(ZoneStoreTest, EveryStepIsKeptUnlessTheListsAreHuge) {
  const auto stepsOf = [this](int changes) {
    store_.Load();
    for (int i = 0; i < changes; ++i) store_.Save(WithKindSwapped(store_.Tree()));
    int steps = 0;
    for (; store_.CanUndo(); ++steps) store_.Undo();
    return steps;
  };
  EXPECT_EQ(stepsOf(60), 60);
  std::string huge = "\"Alerted\"\r\n1,1,\"\",\"Coast\",\"\",\"\",\"\"\r\n";
  for (int i = 0; i < 1'000'000; ++i) huge += i == 999'999 ? "0,1,2\r\n" : "1,1,2\r\n";
  WriteFile(file_, huge);
  EXPECT_EQ(stepsOf(5), 4) << "16 bytes a corner, in 64 MiB";
}

TEST_F(ZoneStoreTest, ADamagedFileIsKeptAsideOnceBeforeItIsChanged) {
  const std::string damaged = kYard + "1,1,\"\",\"Cut\"";
  WriteFile(file_, damaged);
  EXPECT_THAT(store_.Load().message, HasSubstr("line 6 ends within a zone"));
  EXPECT_EQ(store_.Load().message, "") << "told once";
  EXPECT_FALSE(fs::exists(folder_.Path() / "ZoneMenus.txt.damaged1"));
  EXPECT_EQ(store_.Save(WithOneMore("Gate")), "");
  EXPECT_EQ(store_.Save(WithOneMore("Bay")), "");
  EXPECT_EQ(ReadFile(folder_.Path() / "ZoneMenus.txt.damaged1"), damaged);
  EXPECT_FALSE(fs::exists(folder_.Path() / "ZoneMenus.txt.damaged2"));
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard 2:Gate 3:Bay");

  WriteFile(file_, damaged);  // the same damage again: its copy is there
  store_.Load();
  EXPECT_EQ(store_.Save(WithOneMore("Gate")), "");
  EXPECT_FALSE(fs::exists(folder_.Path() / "ZoneMenus.txt.damaged2"));
  WriteFile(file_, damaged + "!");
  store_.Load();
  EXPECT_EQ(store_.Save(WithOneMore("Gate")), "");
  EXPECT_EQ(ReadFile(folder_.Path() / "ZoneMenus.txt.damaged2"), damaged + "!");
}

TEST_F(ZoneStoreTest, AnIllegalDepthLeavesFileAndListAsTheyWere) {
  WriteFile(file_, kYard);
  store_.Load();
  const std::string illegal = kYard + "1,3,\"\",\"Deep\",\"\",\"\",\"\"\r\n0,1,2\r\n";
  WriteFile(file_, illegal);
  EXPECT_EQ(store_.Load().illegalDepth, 3);
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard");
  EXPECT_THAT(store_.Save(WithOneMore("Gate")), HasSubstr("against its rule"));
  EXPECT_THAT(store_.DeleteAll(), HasSubstr("against its rule"));
  EXPECT_EQ(ReadFile(file_), illegal);
}

TEST_F(ZoneStoreTest, WhatCanNotBeReadIsNotChanged) {
  WriteFile(file_, kYard);
  store_.Load();
  const ZoneTree before = WithOneMore("Gate");
  fs::remove(file_);
  fs::create_directory(file_);
  EXPECT_THAT(store_.Load().message, HasSubstr("can't be changed"));
  EXPECT_EQ(store_.Load().message, "");
  EXPECT_EQ(OutlineNow(), "Alerted");
  EXPECT_EQ(store_.Save(before), store_.WhyReadOnly());
  EXPECT_NE(store_.DeleteAll(), "");
  EXPECT_TRUE(fs::is_directory(file_));

  fs::remove(file_);
  fs::resize_file((WriteFile(file_, ""), file_), kMaxZoneFileSize + 1);
  EXPECT_NE(store_.Load().message, "");
  EXPECT_EQ(fs::file_size(file_), kMaxZoneFileSize + 1);
}

TEST_F(ZoneStoreTest, AFailedSaveChangesNothing) {
  WriteFile(file_, kYard);
  store_.Load();
  const fs::path moved = folder_.Path() / "moved";
  store_.Save(WithOneMore("Gate"));
  // A folder in the place of the file can't be replaced by it, for root neither.
  fs::rename(file_, moved);
  fs::create_directories(file_ / "in the way");
  EXPECT_THAT(store_.Save(WithOneMore("Bay")), HasSubstr("could not be saved"));
  EXPECT_THAT(store_.Undo(), HasSubstr("could not be saved"));
  EXPECT_EQ(OutlineNow(), "Alerted 1:Yard 2:Gate");
  EXPECT_TRUE(store_.CanUndo());
  EXPECT_FALSE(store_.CanRedo());
}

}  // namespace
}  // namespace pallomir
