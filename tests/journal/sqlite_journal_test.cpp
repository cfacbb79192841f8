#include "journal/sqlite_journal.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>

#include <sstream>

#include "fakes/temporary_folder.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Millis kNoon = ToMillis({2026, 11, 23, 12});

// "in depot 5": entered the depot 5 seconds after noon; "!" behind the second makes it an alert.
std::vector<JournalEntry> Read(const std::string& unit, const std::string& text) {
  std::vector<JournalEntry> entries;
  std::istringstream words(text);
  std::string what, zone, second;
  while (words >> what >> zone >> second) {
    JournalEntry entry;
    entry.unitId = unit;
    entry.zone = zone;
    entry.hasEntered = what == "in";
    entry.utc = kNoon + std::stoi(second) * kSecond;
    entry.isAlert = second.ends_with('!');
    entry.place = {-7, 1 << 30};
    entries.push_back(entry);
  }
  return entries;
}

std::string Text(const std::vector<JournalEntry>& entries) {
  std::string text;
  for (const JournalEntry& entry : entries) {
    text += entry.unitName + (entry.hasEntered ? " in " : " out ") + entry.zone + ' ' +
            std::to_string((entry.utc - kNoon) / kSecond) + (entry.isAlert ? "!" : "") +
            (entry.stay ? " (" + std::to_string(*entry.stay / kSecond) + ")" : "") +
            (entry.acknowledged ? " ack" : "") + "; ";
  }
  return text;
}

struct Kept {
  Kept() { EXPECT_EQ(journal.Open(folder.Path() / "Journal.db"), ""); }

  // All zones but the named one were looked at.
  std::string Put(const std::string& unit, const std::string& text, int from = 0, int until = 1000,
                  const std::string& gone = "-") {
    const auto isLookedAt = [&](const std::string& zone) { return zone != gone; };
    return Text(
        journal.Replace({unit, "Van " + unit, kNoon + from * kSecond, kNoon + until * kSecond, isLookedAt},
                        Read(unit, text)));
  }
  std::string All(const JournalFilter& filter = {}) { return Text(journal.Rows(filter, 0, 100)); }

  fakes::TemporaryFolder folder;
  SqliteJournal journal;
};

TEST(SqliteJournal, AStretchIsReplacedByWhatIsSaid) {
  Kept kept;
  EXPECT_EQ(kept.Put("A", "in yard 5 in bay 9 out yard 40"), " in yard 5;  in bay 9;  out yard 40; ");
  EXPECT_EQ(kept.Put("A", "in yard 5 in bay 9 out yard 40"), "") << "a reload";
  EXPECT_EQ(kept.Put("B", "in yard 5"), " in yard 5; ");
  EXPECT_EQ(kept.Put("A", "in yard 6", 1, 8, "bay"), " in yard 6; ");
  EXPECT_EQ(kept.All({.unitId = "A"}), "Van A out yard 40 (34); Van A in bay 9; Van A in yard 6; ");
  EXPECT_EQ(kept.Put("A", "in yard 6", 1, 39, "bay"), "");
  EXPECT_THAT(kept.All(), HasSubstr("in bay 9")) << "its zone is gone, what happened is not";
  EXPECT_EQ(kept.Put("A", "in yard 6", 1, 39), "");
  EXPECT_EQ(kept.All(), "Van A out yard 40 (34); Van A in yard 6; Van B in yard 5; ");
}

TEST(SqliteJournal, FiltersCountAndPage) {
  Kept kept;
  kept.Put("A", "in yard 1! in bay 2 out bay 12 out yard 13!");
  kept.Put("B", "in yard 4! in yard 4 out yard 9!");
  const std::tuple<JournalFilter, std::string, std::size_t> cases[] = {
      {{.unitId = "A"},
       "Van A out yard 13! (12); Van A out bay 12 (10); Van A in bay 2; Van A in yard 1!; ",
       4},
      {{.zone = "bay"}, "Van A out bay 12 (10); Van A in bay 2; ", 2},
      {{.alertsOnly = true},
       "Van A out yard 13! (12); Van B out yard 9! (5); Van B in yard 4!; Van A in yard 1!; ",
       4},
      {{.unitId = "B", .zone = "yard", .alertsOnly = true}, "Van B out yard 9! (5); Van B in yard 4!; ", 2},
      {{.unitId = "C"}, "", 0},
      {{.zone = "street"}, "", 0},
  };
  for (const auto& [filter, rows, count] : cases) {
    EXPECT_EQ(kept.All(filter), rows);
    const auto first = kept.journal.RowsBehind(filter, nullptr, 1).value();
    EXPECT_EQ(Text(first) + (first.empty() ? "" : Text(*kept.journal.RowsBehind(filter, &first[0], 9))),
              rows);
    EXPECT_EQ(kept.journal.Count(filter), count) << rows;
  }
  EXPECT_EQ(Text(kept.journal.Rows({}, 1, 2)), "Van A out bay 12 (10); Van B out yard 9! (5); ");
  EXPECT_THAT(kept.journal.Zones(), ElementsAre("bay", "yard"));
  ASSERT_EQ(kept.journal.Units().size(), 2u);
  EXPECT_EQ(kept.journal.Units()[1].name, "Van B");
}

TEST(SqliteJournal, AlertsAreOpenUntilAcknowledgedAlsoAfterARestart) {
  Kept kept;
  kept.Put("A", "in yard 1! in bay 2 out yard 13!");
  kept.Put("B", "in yard 4!");
  EXPECT_EQ(kept.journal.OpenAlerts(), 3u);
  const auto rows = kept.journal.Rows({.unitId = "A"}, 0, 10);
  const std::int64_t ids[] = {rows[0].id, rows[1].id};  // an alert, and none
  kept.journal.Acknowledge(ids, kNoon + kHour);
  kept.journal.Acknowledge(ids, kNoon + 2 * kHour);
  EXPECT_EQ(kept.journal.OpenAlerts(), 2u);
  kept.Put("A", "out yard 13!");  // the others of A were none
  EXPECT_EQ(kept.journal.OpenAlerts(), 1u);
  SqliteJournal again;
  EXPECT_EQ(again.Open(kept.folder.Path() / "Journal.db"), "");
  EXPECT_EQ(again.OpenAlerts(), 1u);
  EXPECT_EQ(again.Count({}), 2u);
  EXPECT_EQ(again.Rows({.unitId = "A"}, 0, 1)[0].acknowledged, kNoon + kHour);
  EXPECT_EQ(again.Rows({.unitId = "A"}, 0, 1)[0].place, (WorldPoint{-7, 1 << 30}));
  EXPECT_FALSE(again.AcknowledgeSome({.unitId = "A"}, kNoon + 3 * kHour));
  EXPECT_EQ(again.OpenAlerts(), 1u);
  EXPECT_FALSE(again.AcknowledgeSome({}, kNoon + 3 * kHour));
  EXPECT_EQ(again.OpenAlerts(), 0u);
}

TEST(SqliteJournal, TheOldestGoBeyondTheBound) {
  fakes::TemporaryFolder folder;
  SqliteJournal journal(3);
  journal.Open(folder.Path() / "Journal.db");
  const auto all = [](const std::string&) { return true; };
  journal.Replace({"A", "", kNoon, kNoon + kHour, all}, Read("A", "in yard 1! out yard 2 in yard 3!"));
  journal.Replace({"B", "", kNoon, kNoon + kHour, all}, Read("B", "in yard 4 out yard 5"));
  EXPECT_EQ(Text(journal.Rows({}, 0, 9)), " out yard 5 (1);  in yard 4;  in yard 3!; ");
  EXPECT_EQ(journal.Count({}), 3u);
  EXPECT_EQ(journal.OpenAlerts(), 1u);
}

TEST(SqliteJournal, FilesThatAreNoneAreToldAndNothingIsLost) {
  fakes::TemporaryFolder folder;
  const auto file = folder.Path() / "Journal.db";
  fakes::WriteFile(file, std::string(5000, 'x'));
  {
    SqliteJournal journal;
    EXPECT_THAT(journal.Open(file), HasSubstr("put aside"));
    EXPECT_EQ(fakes::ReadFile(file.string() + ".damaged1"), std::string(5000, 'x'));
    journal.Replace({"A", "", 0, kNoon, {}}, Read("A", "in yard 1"));
    EXPECT_EQ(journal.Count({}), 1u);
  }
  SqliteDatabase(file.string()).Execute("PRAGMA user_version = 99");
  SqliteJournal older, nowhere;
  EXPECT_THAT(older.Open(file), HasSubstr("newer version"));
  EXPECT_THAT(nowhere.Open(folder.Path() / "missing" / "Journal.db"), HasSubstr("can't be kept"));
  nowhere.Replace({"A", "", 0, kNoon, {}}, Read("A", "in yard 1"));
  EXPECT_EQ(nowhere.Count({}), 1u) << "it lasts for this run";
  EXPECT_FALSE(std::filesystem::exists(file.string() + ".damaged2"));
}

// A limit on the size of files stands for the full disk.
TEST(SqliteJournal, WhatCanNotBeWrittenIsToldOnceAndComesWithTheNextReload) {
  Kept kept;
  kept.Put("A", "in yard 1!");
  std::vector<std::string> told;
  kept.journal.failed = [&](const std::string& why) { told.push_back(why); };
  std::string many;
  for (int i = 2; i < 3000; ++i) many += (i % 2 ? "in yard " : "out yard ") + std::to_string(i) + "! ";
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, SIG_IGN);
  const rlimit small{100'000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_EQ(kept.Put("B", many, 0, 5000), "");
  EXPECT_EQ(kept.Put("B", many, 0, 5000), "");
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(told.size(), 1u);
  EXPECT_EQ(kept.journal.Count({}), 1u);
  EXPECT_EQ(kept.journal.OpenAlerts(), 1u);
  kept.Put("B", many, 0, 5000);
  EXPECT_EQ(kept.journal.Count({}), 2999u);
}

}  // namespace
}  // namespace pallomir
