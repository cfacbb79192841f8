#include "commands/command_table.h"
#include "shell/client_testing.h"

// Who enters and leaves a zone is noted, shown, and told.

namespace pallomir {
namespace {

constexpr char kZones[] =
    "\"Alerted\"\r\n"
    "1,1,\"\",\"Depot\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
    "1,40,-75\r\n1,40,-74\r\n1,41,-74\r\n0,41,-75\r\n";

class JournalJointsTest : public ClientTest {
 protected:
  void Start(const std::map<std::string, std::string>& stored = {}) {
    for (const auto& [key, value] : stored) settings.values[key] = value;
    std::filesystem::create_directories(folders.Path() / "data/pallomir");
    fakes::WriteFile(folders.Path() / "data/pallomir/ZoneMenus.txt", kZones);
    clock.now = ToMillis({2026, 11, 22, 12, 5});
    StartStreaming();
    Command("Z12");
  }
  void Send(std::initializer_list<std::pair<int, double>> secondsAndLongitudes) {
    std::vector<WireRecord> records;
    for (const auto& [seconds, lng] : secondsAndLongitudes) records.push_back(Record(seconds, 40.5, lng));
    Arrive(PacketOf(records));
  }
  void Key(char key) { client->KeyDown(kNoModifier, key); }
  std::string Row(std::size_t row) {
    const JournalEntry* entry = journalView.list->At(row);
    if (!entry) return {};
    std::string text;
    for (int column = 0; column < JournalList::kColumns; ++column)
      text += journalView.list->Text(*entry, static_cast<JournalList::Column>(column)) + '|';
    return text;
  }
};

TEST_F(JournalJointsTest, ABatchIsNotedToldAndShownWhereItWas) {
  Start();
  Send({{0, -75.5}, {60, -74.5}, {120, -73.5}});
  EXPECT_EQ(journalView.openAlerts, 1u);
  ASSERT_THAT(notifier.shown, SizeIs(1));
  EXPECT_EQ(notifier.shown[0].title, "First");
  EXPECT_EQ(notifier.shown[0].text, "Entered Depot, 07:00:30 a");
  journalView.bell();
  ASSERT_TRUE(journalView.list);
  journalView.list->Refresh();
  EXPECT_EQ(Row(0), "11/22/26 07:01:30 AM|First|Left|Depot||1 min|");
  EXPECT_EQ(Row(1), "11/22/26 07:00:30 AM|First|Entered|Depot|Alert||");
  browser.writes.clear();
  journalView.actions.show(*journalView.list->At(1));
  EXPECT_THAT(browser.writes, testing::Contains(testing::Pair("TxtF", HasSubstr("+040.500000-075.000000"))));
  ASSERT_TRUE(view.pointedAt);
  EXPECT_EQ(view.pointedAt->first, 1);
  Command("M40.5,-75");
  EXPECT_TRUE(view.marker);
  browser.writes.clear();
  notifier.shown[0].clicked();
  EXPECT_THAT(browser.writes, testing::Contains(testing::Pair("TxtF", HasSubstr("+040.500000-075.000000"))));
  journalView.actions.acknowledge({journalView.list->At(1)->id});
  EXPECT_EQ(journalView.openAlerts, 0u);
}

TEST_F(JournalJointsTest, ItOutlastsTheRunAndAReloadAddsNothing) {
  Start();
  Send({{0, -75.5}, {60, -74.5}});
  Key('R');
  Connect();
  Send({{0, -75.5}, {60, -74.5}});
  Key('J');
  journalView.list->Refresh();
  EXPECT_EQ(journalView.list->Count(), 1u);
  EXPECT_THAT(notifier.shown, SizeIs(1));
  journalView.actions.notify(false);
  journalView.actions.moved("1,2,300,400");
  Restart();
  EXPECT_FALSE(journalView.list);
  Start();
  Key('J');
  journalView.list->Refresh();
  EXPECT_EQ(Row(0), "11/22/26 07:00:30 AM|First|Entered|Depot|Alert||");
  EXPECT_EQ(journalView.choices.place, "1,2,300,400");
  EXPECT_FALSE(journalView.choices.notifies);
  Send({{0, -75.5}, {60, -74.5}, {90, -75.5}, {120, -74.5}});
  EXPECT_TRUE(notifier.shown.empty());
}

TEST_F(JournalJointsTest, OnlyZoneAlertsAreHeardWhereTheUserWantsIt) {
  Start({{"Zone Alerts Only", "True"}});
  Send({{0, -75.5}, {60, -75.4}});
  EXPECT_THAT(sound.plays, SizeIs(0));
  Key('F');
  Send({{120, -74.5}});
  Key('F');
  EXPECT_THAT(sound.plays, SizeIs(1));
  Send({{180, -74.4}});
  Key('F');
  EXPECT_THAT(sound.plays, SizeIs(1));
}

TEST_F(JournalJointsTest, ChangedZonesMakeNoEvents) {
  Start();
  Send({{0, -75.5}, {60, -74.5}});
  Choose("mnuZonesDeleteAllZones");
  box.AnswerIt({true, ""});
  Key('F');
  Send({{120, -73.5}});
  Key('F');
  Key('J');
  journalView.list->Refresh();
  EXPECT_EQ(journalView.list->Count(), 1u);
}

TEST_F(JournalJointsTest, ItIsSavedWhereTheUserSaysAndAFileIsReplacedWhenAsked) {
  Start();
  Send({{0, -75.5}, {60, -74.5}});
  Key('J');
  const auto file = folders.Path() / "journal.csv";
  fakes::WriteFile(file, "old");
  for (const bool replaces : {false, true}) {
    journalView.actions.save();
    journalView.fileChosen(file);
    EXPECT_THAT(box.shown.back().text, HasSubstr("is there already"));
    box.AnswerIt({replaces, ""});
    loop.Advance(5);
    EXPECT_EQ(fakes::ReadFile(file) == "old", !replaces);
  }
  EXPECT_THAT(journalView.note, HasSubstr("1 entry saved"));
}

}  // namespace
}  // namespace pallomir
