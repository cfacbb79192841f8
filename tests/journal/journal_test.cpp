#include "journal/journal.h"

#include <gmock/gmock.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_journal_view.h"
#include "fakes/fake_system.h"
#include "fakes/temporary_folder.h"
#include "journal/alert_notices.h"
#include "journal/journal_export.h"
#include "journal/journal_list.h"
#include "journal/sqlite_journal.h"
#include "map/projection.h"
#include "settings/choice_table.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const Millis kNoon = ToMillis({2026, 11, 22, 12});

ZoneTree Depot(const char* name = "Depot") {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  builder.Append(1, {"", name}, Square(40, -75, 0.04));
  builder.Append(2, {"", "Bay, \"B\""}, Square(40.01, -74.99, 0.02));
  return builder.Build();
}

// Two units on their ways through a depot at 40, -75, and all that is noted of them.
struct JournalRoom : testing::Test {
  JournalRoom() {
    EXPECT_EQ(store.Open(":memory:"), "");
    clock.now = kNoon + 10 * kMinute;
    local.SetOffset(5 * 60);
    points.Reset(2);
    Journal::Host host;
    host.changed = [this] { ++changes; };
    host.foundLate = [this] { ++foundLate; };
    host.alerted = [this](const JournalEntry& entry) {
      alerted.push_back(entry.unitName + ' ' + entry.zone);
    };
    journal.emplace(store, loop, clock, local, points, book, FlickerLimits{}, std::move(host));
    journal->SetZones(Depot());
  }

  // Unit k is at these longitudes, at latitude 40.02, a minute apart from this minute after noon on.
  void Send(std::size_t k, int minute, std::initializer_list<double> longitudes) {
    std::vector<DataPoint> rows;
    for (const double lng : longitudes) {
      rows.push_back({*EncodePackedTime(kNoon + minute++ * kMinute), LngToWorldX(DegreesToPositionUnits(lng)),
                      LatToWorldY(DegreesToPositionUnits(40.02)), 0});
    }
    points.Merge(k, rows);
    MergedBatch batch;
    batch.units = {k};
    batch.earliest = {{k, rows.front().time}};
    journal->OnBatch(batch);
  }
  void Reload() {
    points.Reset(2);
    journal->OnReload();
  }
  std::string All() {
    JournalList list(store, local);
    list.Refresh();
    std::string text;
    for (std::size_t row = 0; row < list.Count(); ++row) {
      for (int column = 0; column < JournalList::kColumns; ++column)
        text += list.Text(*list.At(row), static_cast<JournalList::Column>(column)) + '|';
      text += '\n';
    }
    return text;
  }

  fakes::FakeEventLoop loop;
  fakes::FakeClock clock;
  LocalClock local{clock};
  PointStore points;
  UnitBook book =
      EnumerateUnits({{true, "00000000000A", "Van A"}, {false, "X", "X"}, {true, "00000000000B", "Van B"}});
  SqliteJournal store;
  int changes = 0;
  int foundLate = 0;
  std::vector<std::string> alerted;
  std::optional<Journal> journal;
};

TEST_F(JournalRoom, ABatchIsNotedAtOnceAndAReloadGivesTheSame) {
  Send(1, 0, {-75.02, -74.995});
  Send(2, 3, {-74.98, -74.90});
  const std::string all =
      "11/22/26 07:03:15 AM|Van B|Left|Depot|||\n"
      "11/22/26 07:03:07 AM|Van B|Left|Depot › Bay, \"B\"|Alert||\n"
      "11/22/26 07:00:48 AM|Van A|Entered|Depot|Alert||\n";
  EXPECT_EQ(All(), all);
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(journal->HasBatchAlert());
  EXPECT_THAT(alerted, ElementsAre("Van A Depot", "Van B Depot › Bay, \"B\""));
  Reload();
  EXPECT_FALSE(journal->HasBatchAlert());
  Send(1, 0, {-75.02, -74.995});
  EXPECT_FALSE(journal->HasBatchAlert()) << "it is known";
  EXPECT_EQ(All(), all);
  EXPECT_EQ(alerted.size(), 2u);
}

TEST_F(JournalRoom, OldAlertsAreNotedAndNobodyIsCalled) {
  clock.now = kNoon + kHour;
  Send(1, 0, {-75.02, -74.995});
  EXPECT_TRUE(journal->HasBatchAlert());
  EXPECT_EQ(store.OpenAlerts(), 1u);
  EXPECT_TRUE(alerted.empty());
}

TEST_F(JournalRoom, ChangedZonesAreForWhatFollows) {
  Send(1, 0, {-75.02, -74.995, -74.98});
  const std::string before = All();
  journal->SetZones(Depot("Yard"));
  EXPECT_EQ(All(), before);
  Send(1, 3, {-74.90});
  EXPECT_THAT(All(), HasSubstr("Left|Yard"));
  Reload();
  Send(1, 0, {-75.02, -74.995, -74.98, -74.90});
  EXPECT_THAT(All(), HasSubstr("Entered|Depot")) << "what happened in a zone that is gone stays";
  EXPECT_THAT(All(), HasSubstr("Entered|Yard"));
}

// More points than are looked at in a blink: the rest follows when the window has nothing to do. Only the
// last tenth comes near the zones.
TEST_F(JournalRoom, ALoadIsWorkedOffInParts) {
  constexpr int kPoints = 1'000'000;
  std::vector<DataPoint> rows;
  for (int i = 0; i < kPoints; ++i) {
    const double east = i % 1000 < 500 ? 0.1 - 0.0002 * (i % 500) : 0.0002 * (i % 500);
    const double lng = -75 + east + (i < kPoints * 9 / 10 ? 0.2 : 0);
    rows.push_back({*EncodePackedTime(kNoon - kPoints * kSecond + i * kSecond),
                    LngToWorldX(DegreesToPositionUnits(lng)), LatToWorldY(DegreesToPositionUnits(40.02)), 0});
  }
  points.Merge(1, rows);
  MergedBatch batch;
  batch.earliest = {{1, rows.front().time}};
  journal->OnBatch(batch);
  EXPECT_TRUE(journal->IsWorking());
  for (int ticks = 0; journal->IsWorking() && ticks < 100'000; ++ticks) loop.Advance(1);
  EXPECT_FALSE(journal->IsWorking());
  EXPECT_EQ(store.Count({}), 600u);
  EXPECT_EQ(foundLate, 1);
  journal->AcknowledgeAll({});
  journal->SetZones(Depot("Yard"));  // leaves it to be done
  loop.Advance(10);
  EXPECT_EQ(store.OpenAlerts(), 0u);
}

TEST_F(JournalRoom, ItIsSavedAsCsvInParts) {
  fakes::TemporaryFolder folder;
  const auto file = folder.Path() / "journal.csv";
  std::string told;
  JournalExport saving(store, local, loop, [&](const std::string& text) { told = text; });
  Send(1, 0, {-75.02, -74.98});
  saving.Start({}, file);
  EXPECT_FALSE(std::filesystem::exists(file));
  loop.Advance(1);
  EXPECT_EQ(told, "2 entries saved as " + file.string());
  EXPECT_EQ(
      fakes::ReadFile(file),
      "Time,Unit ID,Unit,Event,Zone,Alert,Late,Stay (s),Acknowledged,Latitude,Longitude\r\n"
      "2026-11-22 07:00:45,\"00000000000A\",\"Van A\",Entered,\"Depot › Bay, \"\"B\"\"\",No,No,,,40.020000,"
      "-74.990000\r\n"
      "2026-11-22 07:00:30,\"00000000000A\",\"Van A\",Entered,\"Depot\",Yes,No,,,40.020000,-75.000000\r\n");
  saving.Start({}, folder.Path() / "missing" / "journal.csv");
  loop.Advance(1);
  EXPECT_THAT(told, HasSubstr("could not be saved"));
  saving.Start({}, file);
  saving.Drop();
  EXPECT_FALSE(std::filesystem::exists(file.string() + ".part"));
}

TEST_F(JournalRoom, ACsvFileOfWhichRowsCanNotBeReadIsNone) {
  fakes::TemporaryFolder folder;
  const auto file = folder.Path() / "journal.csv", kept = folder.Path() / "Journal.db";
  SqliteJournal torn;
  ASSERT_EQ(torn.Open(kept), "");
  std::string told;
  JournalExport saving(torn, local, loop, [&](const std::string& text) { told = text; });
  saving.Start({}, file);
  ASSERT_TRUE(SqliteDatabase(kept.string()).Execute("DROP TABLE entries"));
  loop.Advance(1);
  EXPECT_THAT(told, HasSubstr("could not be saved"));
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(AlertNotices, OneForAUnitAndZoneInHalfAMinute) {
  fakes::FakeClock clock;
  LocalClock local{clock};
  fakes::FakeSettings settings;
  const ChoiceComplaint complain = [](const std::string&) {};
  Choice<bool> isOn(settings, choice::kJournalNotifies, complain);
  fakes::FakeNotifier notifier;
  AlertNotices notices(notifier, clock, local, isOn);
  const Millis start = clock.now;
  const auto tell = [&](Millis after, const char* unit, const char* zone) {
    clock.now = start + after;
    JournalEntry alert;
    alert.unitId = unit;
    alert.zone = zone;
    notices.Tell(alert, [] {});
    return std::exchange(notifier.shown, {}).size() == 1;
  };
  EXPECT_TRUE(tell(0, "A", "Depot"));
  EXPECT_TRUE(tell(0, "A", "Yard"));
  EXPECT_TRUE(tell(1, "B", "Depot"));
  EXPECT_FALSE(tell(30 * kSecond - 1, "A", "Depot"));
  EXPECT_TRUE(tell(30 * kSecond, "A", "Depot"));
  EXPECT_TRUE(tell(-kHour, "A", "Depot")) << "the clock was set back";
  isOn.Store(false);
  EXPECT_FALSE(tell(kHour, "A", "Depot"));
}

TEST(JournalText, Stays) {
  const std::pair<Millis, const char*> cases[] = {
      {59'999, "59 s"},          {kMinute, "1 min"},
      {kHour - 1, "59 min"},     {kHour + 5 * kMinute, "1 h 05 min"},
      {kDay - 1, "23 h 59 min"}, {2 * kDay + 4 * kHour, "2 d 4 h"}};
  for (const auto& [stay, text] : cases) EXPECT_EQ(StayText(stay), text);
}

}  // namespace
}  // namespace pallomir
