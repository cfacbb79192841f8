#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "fakes/temporary_folder.h"
#include "gate_table.h"
#include "journal/sqlite_database.h"
#include "reports/visit_search.h"

// The search for visits: two thousand full files of one unit against reading them and against a database with
// the same records.

namespace pallomir {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "00000000000A";
constexpr int kFiles = 2000;

// A clicked place at zoom 13, which a track that wanders about within some 25 km comes by now and then.
constexpr double kLat = 45.07, kLng = 7.68;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

SearchArea Area() { return SearchArea::Around(kLat, kLng, HalfHeightAt(13)); }

// A record every ten seconds, a few dozen metres from the one before.
class Wanderer {
 public:
  explicit Wanderer(unsigned seed) : random_(seed) {}

  WireRecord Next() {
    constexpr std::int32_t kFarthest = 150'000;
    const auto step = [this](std::int32_t at, std::int32_t& drift) {
      if (random_() % 50 == 0) drift = static_cast<std::int32_t>(random_() % 401) - 200;
      if (std::abs(at + drift) > kFarthest) drift = -drift;
      return at + drift;
    };
    north_ = step(north_, driftNorth_);
    east_ = step(east_, driftEast_);
    time_ += 10 * kSecond;
    return {EncodePackedTime(time_).value_or(0), static_cast<std::int32_t>(kLat * 600000) + north_,
            static_cast<std::int32_t>(kLng * 600000) + east_, 0};
  }

 private:
  std::mt19937 random_;
  Millis time_ = ToMillis({2020, 1, 1});
  std::int32_t north_ = 60'000, east_ = 0, driftNorth_ = 0, driftEast_ = 0;
};

/// A data folder of units with so many full files each.
class MadeFolder {
 public:
  MadeFolder(int units, int files) {
    for (int unit = 0; unit < units; ++unit) {
      units_.push_back("00000000000" + std::string(1, static_cast<char>('A' + unit)));
      fs::create_directories(Path() / units_.back());
      Wanderer track(static_cast<unsigned>(unit + 1));
      for (int file = 0; file < files; ++file)
        WriteFile(Path() / units_.back() / std::to_string(100'000 + file), track);
    }
  }

  const fs::path& Path() const { return folder_.Path(); }
  const std::vector<std::string>& Units() const { return units_; }

 private:
  static void WriteFile(const fs::path& file, Wanderer& track) {
    Bytes bytes;
    for (std::size_t i = 0; i < kRecordsPerPacket; ++i) AppendFileRecord(bytes, track.Next());
    fakes::WriteFile(file, std::string(AsText(bytes)));
  }

  fakes::TemporaryFolder folder_;
  std::vector<std::string> units_;
};

const MadeFolder& Folder() {
  static const MadeFolder folder(1, kFiles);
  return folder;
}

std::vector<Visit> Search(const MadeFolder& folder, std::size_t limit = kMostVisits) {
  VisitSearch search(folder.Path(), {folder.Units(), Area(), {}, limit});
  while (search.Step()) {
  }
  if (!search.Problem().empty()) Fail(search.Problem());
  return search.Visits();
}

void VisitsInFullFiles(benchmark::State& state) {
  std::size_t visits = 0;
  for (auto _ : state) visits = Search(Folder()).size();
  state.counters["visits"] = static_cast<double>(visits);
}

void ReadFullFiles(benchmark::State& state) {
  DataFileReader reader;
  for (auto _ : state) {
    UnitFiles files(Folder().Path() / kUnit);
    if (files.List() || files.Open()) Fail("can't list the files");
    for (std::size_t file = files.Names().size(); file-- > 0;) {
      if (reader.Read(files.Descriptor(), files.Names()[file].c_str()) != DataFileReader::Outcome::kRead)
        Fail("can't read a file");
      benchmark::DoNotOptimize(reader.Content().data());
      benchmark::ClobberMemory();
    }
  }
}

// The same records in a database file, found by the time of the unit, or in a tree of places.
class Database {
 public:
  Database() : file_((Folder().Path() / "records.sqlite").string()), database_(file_) {
    Demand(database_.Execute("PRAGMA journal_mode=OFF") && database_.Execute("PRAGMA synchronous=OFF") &&
           database_.Execute("PRAGMA cache_size=-262144") &&
           database_.Execute("PRAGMA mmap_size=1073741824"));
    Demand(database_.Execute("CREATE TABLE record(time INTEGER PRIMARY KEY, lat INTEGER, lng INTEGER)"));
    Demand(database_.Execute(
        "CREATE VIRTUAL TABLE place USING rtree_i32(time, minLat, maxLat, minLng, maxLng)"));
    Demand(database_.Execute("BEGIN"));
    const auto start = std::chrono::steady_clock::now();
    SqliteStatement record = database_.Prepare("INSERT INTO record VALUES(?,?,?)");
    SqliteStatement place = database_.Prepare("INSERT INTO place VALUES(?,?,?,?,?)");
    Wanderer track(1);
    for (std::size_t i = 0; i < kFiles * kRecordsPerPacket; ++i) {
      const WireRecord r = track.Next();
      Demand(record.Bind(1, r.time).Bind(2, r.latitude).Bind(3, r.longitude).Run());
      Demand(place.Bind(1, r.time)
                 .Bind(2, r.latitude)
                 .Bind(3, r.latitude)
                 .Bind(4, r.longitude)
                 .Bind(5, r.longitude)
                 .Run());
    }
    Demand(database_.Execute("COMMIT"));
    secondsToMake_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  }

  double SecondsToMakeTree() const { return secondsToMake_; }

  // Visits are runs of inside records among all of them, newest first.
  std::vector<Visit> VisitsByTable() {
    SqliteStatement rows = database_.Prepare(
        "SELECT time, lat BETWEEN ? AND ? AND lng BETWEEN ? AND ? FROM record ORDER BY time DESC");
    BindBox(rows);
    std::vector<Visit> visits;
    Visit open;
    while (visits.size() < kMostVisits && rows.Step()) Take(rows, open, visits);
    return visits;
  }

  // The inside records from the tree, and for each its neighbour in time: where that is another one, a run
  // ends.
  std::vector<Visit> VisitsByTree() {
    SqliteStatement rows = database_.Prepare(
        "SELECT time, (SELECT max(time) FROM record WHERE record.time < place.time) FROM place "
        "WHERE minLat >= ? AND maxLat <= ? AND minLng >= ? AND maxLng <= ? ORDER BY time DESC");
    BindBox(rows);
    std::vector<Visit> visits;
    std::int64_t next = -1;
    while (rows.Step()) {
      const auto time = static_cast<std::uint32_t>(rows.Integer(0));
      if (next != rows.Integer(0)) {
        if (visits.size() == kMostVisits) break;
        visits.push_back({0, time, time, 0});
      }
      visits.back().entry = time;
      ++visits.back().records;
      next = rows.Integer(1);
    }
    return visits;
  }

 private:
  static void BindBox(SqliteStatement& rows) {
    const PositionBox box = Area().Box();
    int at = 0;
    for (const std::int32_t side : {box.minLatitude, box.maxLatitude, box.minLongitude, box.maxLongitude})
      rows.Bind(++at, side);
  }
  static void Take(const SqliteStatement& rows, Visit& open, std::vector<Visit>& visits) {
    const auto time = static_cast<std::uint32_t>(rows.Integer(0));
    if (rows.Integer(1) != 0) {
      if (open.records++ == 0) open.exit = time;
      open.entry = time;
    } else if (open.records > 0) {
      visits.push_back(std::exchange(open, {}));
    }
  }
  void Demand(bool isDone) const {
    if (!isDone) Fail("the database: " + database_.Error());
  }

  std::string file_;
  SqliteDatabase database_;
  double secondsToMake_ = 0;
};

Database& Yardstick() {
  static Database database;
  return database;
}

void VisitsBySqliteTable(benchmark::State& state) {
  if (Yardstick().VisitsByTable() != Search(Folder())) Fail("the table finds other visits");
  for (auto _ : state) benchmark::DoNotOptimize(Yardstick().VisitsByTable());
}

// The tree answers at once but has to be made of the files first: that counts over ten questions.
void VisitsBySqliteTree(benchmark::State& state) {
  constexpr double kQuestions = 10;
  if (Yardstick().VisitsByTree() != Search(Folder())) Fail("the tree finds other visits");
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(Yardstick().VisitsByTree());
    const std::chrono::duration<double> question = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(question.count() + Yardstick().SecondsToMakeTree() / kQuestions);
  }
}

// Ten years of four units, a record every minute: 20 million.
const MadeFolder& TenYears() {
  static const MadeFolder folder(4, 6945);
  return folder;
}

double FastestOfThree() {
  std::array<double, 3> seconds{};
  for (double& each : seconds) {
    const auto start = std::chrono::steady_clock::now();
    Search(TenYears());
    each = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  }
  return std::ranges::min(seconds);
}

double SecondsForTenYears() {
  if (fs::exists(TenYears().Path() / ".summaries")) Fail("there are summaries already");
  return FastestOfThree();
}

double SecondsWithSummaries() {
  const std::vector<Visit> plain = Search(TenYears());
  for (const std::string& unit : TenYears().Units()) StoreSummaries(TenYears().Path(), unit);
  if (Search(TenYears()) != plain) Fail("with summaries other visits are found");
  return FastestOfThree();
}

// In MB, of what is resident beside what was before.
double MemoryForTenYears() {
  const auto resident = [](const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
      if (line.starts_with(key)) return std::atof(line.c_str() + key.size()) / 1024;
    return 0.0;
  };
  TenYears();
  ::malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins anew
  const double before = resident("VmRSS:");
  Search(TenYears());
  return resident("VmHWM:") - before;
}

BENCHMARK(VisitsInFullFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadFullFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(VisitsBySqliteTable)->Unit(benchmark::kMillisecond);
BENCHMARK(VisitsBySqliteTree)->UseManualTime()->Unit(benchmark::kMillisecond);

const bench::GateRow kRead({"visits in 2,000 full files", "VisitsInFullFiles", "ReadFullFiles", 1 / 1.15,
                            1 / 1.05});
const bench::GateRow kTable({"visits in 2,000 full files", "VisitsInFullFiles", "VisitsBySqliteTable", 4, 5});
const bench::GateRow kTree({"visits in 2,000 full files", "VisitsInFullFiles",
                            "VisitsBySqliteTree/manual_time", 4, 5});

const bench::FigureRow kTenYears("a question over 20 M records in 27,780 files, seconds", SecondsForTenYears,
                                 1);
const bench::FigureRow kSummaries("the same with summaries, seconds", SecondsWithSummaries, 0.1);
const bench::FigureRow kMemory("memory while 20 M records are searched, MB", MemoryForTenYears, 64);

}  // namespace
}  // namespace pallomir
