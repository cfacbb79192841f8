#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <set>
#include <thread>

#include "base/packed_time.h"
#include "fakes/process.h"
#include "fakes/temporary_folder.h"
#include "settings/settings_file.h"
#include "station/store/data_files.h"
#include "station/store/unit_descriptions.h"
#include "station/store/unit_index.h"
#include "zones/zone_file.h"
#include "zones/zone_store.h"

// Kills client, station and import at random moments, as often as the argument says (200, if nothing), and
// looks each time whether what they write is whole: kill_at_random [ROUNDS [SEED]]

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using fakes::Process;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr char kAddress[] = "127.0.63.1";  // this program's own
constexpr char kUnit[] = "0013A20040B1";
constexpr std::int64_t kPointsAnImport = 2000;
constexpr int kImportsAFolder = 20;  // then a fresh one, so that a long run does not slow down
constexpr std::string_view kKeyPrefix = "pallomir browser~Startup~";

#define MUST(condition, ...)                            \
  do {                                                  \
    if (!(condition)) {                                 \
      std::fprintf(stderr, "broken: %s: ", #condition); \
      std::fprintf(stderr, __VA_ARGS__);                \
      std::fputc('\n', stderr);                         \
      std::exit(1);                                     \
    }                                                   \
  } while (false)

class Run {
 public:
  explicit Run(unsigned seed) : random_(seed) {
    for (const char* name : {"profile", "config", "runtime", "share", "share/pallomir", "writer"})
      fs::create_directory(folder_.Path() / name);
    fs::permissions(folder_.Path() / "runtime", fs::perms::owner_all);
    fs::copy(PALLOMIR_FOLDER, folder_.Path() / "app", fs::copy_options::recursive);
    fakes::WriteFile(folder_.Path() / "app/deployment.ini",
                     std::string("WebsiteServer=") + kAddress + "\nWebSite=" + kAddress + ":2480\n");
    std::string settings;
    for (const auto& [key, value] : std::map<std::string, std::string>{
             {"Demo Mode", "False"}, {"Mobile Units", UnitList()}, {"WindowState", "0"}})
      settings += SettingsLine(std::string(kKeyPrefix) + key, value) + "\r\n";
    fakes::WriteFile(Registry(), settings);
    FreshData();
  }

  void Round(int number) {
    KillSettingsWriter();
    KillZoneWriter();
    KillImport();
    KillClientAndStation(number % 2 == 0);
  }

  void Report(int rounds) const {
    std::printf(
        "%d rounds: %d settings writers killed (%d inside a write), %d zone writers (%d inside), %d imports "
        "(%d left the old data, %d the "
        "new, %d inside the work), %d clients (%d while ending), %d stations; all files whole\n",
        rounds, rounds, writersInside_, rounds, zonesInside_, rounds, importsOld_, importsNew_,
        importsInside_, rounds, clientsEnding_, rounds);
    std::fflush(stdout);
  }

 private:
  static std::string UnitList() { return std::string("X") + kUnit + "Van \"7\"~"; }
  fs::path Registry() const { return folder_.Path() / "share/pallomir/Registry.txt"; }

  void Pause(microseconds most) {
    std::this_thread::sleep_for(
        microseconds(std::uniform_int_distribution<std::int64_t>(0, most.count())(random_)));
  }

  static SettingsTable WholeSettings(const fs::path& file) {
    const ParsedSettings settings = ParseSettings(fakes::ReadFile(file));
    MUST(settings.damagedLines == 0, "%zu damaged lines in %s", settings.damagedLines, file.c_str());
    return settings.table;
  }

  // A process that stores settings as fast as it can. Two keys change together: what is read is never older
  // than the one save between them.
  void KillSettingsWriter() {
    const fs::path common = folder_.Path() / "writer";
    const pid_t writer = ::fork();
    if (writer == 0) {
      SettingsFile file(common, [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); });
      SettingsTable table = file.Load().table;
      for (int i = 0;; ++i) {
        table.Set(std::string(kKeyPrefix) + "Count", std::to_string(i));
        file.Write(table);
        table.Set(std::string(kKeyPrefix) + "Text",
                  std::string(static_cast<std::size_t>(i * 37 % 5000), 'x'));
        file.Write(table);
      }
    }
    Pause(milliseconds(30));
    ::kill(writer, SIGKILL);
    int status = 0;
    ::waitpid(writer, &status, 0);
    MUST(WIFSIGNALED(status), "the writer ended by itself");
    writersInside_ += fs::exists(common / "pallomir/Registry.txt.new");
    if (!fs::exists(common / "pallomir/Registry.txt")) return;  // killed before its first save
    const SettingsTable table = WholeSettings(common / "pallomir/Registry.txt");
    const std::string* count = table.Find(std::string(kKeyPrefix) + "Count");
    const std::string* text = table.Find(std::string(kKeyPrefix) + "Text");
    MUST(count, "no Count");
    if (!text) return;
    int i = 0;
    std::from_chars(count->data(), count->data() + count->size(), i);
    const auto length = [](int n) { return static_cast<std::size_t>(n * 37 % 5000); };
    // A first save follows the old run's text.
    MUST(i == 0 || text->size() == length(i) || text->size() == length(i - 1), "Text is none of Count %d", i);
  }

  // Changes one list into another and back, by saves and by undoing them.
  void KillZoneWriter() {
    const fs::path file = folder_.Path() / "writer/ZoneMenus.txt";
    const ZoneTree lists[] = {ZoneList(0), ZoneList(1)};
    const pid_t writer = ::fork();
    if (writer == 0) {
      ZoneStore store(file);
      if (!store.Load().message.empty()) ::_exit(1);
      for (int i = 0;; ++i) {
        const std::string problem = i % 3 == 2 ? store.Undo() : store.Save(lists[i % 2]);
        if (!problem.empty()) ::_exit(1);
      }
    }
    Pause(milliseconds(30));
    ::kill(writer, SIGKILL);
    int status = 0;
    ::waitpid(writer, &status, 0);
    MUST(WIFSIGNALED(status), "the writer of zones ended by itself");
    zonesInside_ += fs::exists(folder_.Path() / "writer/ZoneMenus.txt.new");
    if (!fs::exists(file)) return;  // killed before its first save
    const std::string zones = fakes::ReadFile(file);
    MUST(zones == WriteZones({}) || zones == WriteZones(lists[0]) || zones == WriteZones(lists[1]),
         "%zu bytes of zones are of no list", zones.size());
  }

  // Long enough that writing it takes its time.
  static ZoneTree ZoneList(int number) {
    ZoneTreeBuilder builder(number == 0 ? ZoneKind::kAlerted : ZoneKind::kNonAlert);
    for (int zone = 0; zone < 500 + 400 * number; ++zone) {
      builder.Begin(1 + zone % 3, {"", "Zone " + std::to_string(zone + number)});
      for (int corner = 0; corner < 20; ++corner) builder.Add({number + corner / 7.0, zone / 7.0});
    }
    return builder.Build();
  }

  fs::path Data() const { return folder_.Path() / ("data" + std::to_string(dataNumber_)); }

  void FreshData() {
    std::error_code ignored;
    fs::remove_all(Data(), ignored);
    ++dataNumber_;
    fs::create_directory(Data());
    stored_.clear();
    imports_ = 0;
    RunImport(NextGpx());
    MUST(StoredTimes() == stored_, "an import that nobody killed");
  }

  // Each recording lies among the ones before, so that it changes their files.
  fs::path NextGpx() {
    std::string gpx = "<gpx><trk><trkseg>";
    for (std::int64_t i = 0; i < kPointsAnImport; ++i) {
      const Millis time = ToMillis({2026, 11, 1}) + (i * kImportsAFolder + imports_) * kSecond;
      next_.insert(EncodePackedTime(time).value_or(0));
      std::string text = IsoText(time);
      text[10] = 'T';
      gpx += "<trkpt lat=\"40.5\" lon=\"-75.25\"><time>" + text + "Z</time></trkpt>";
    }
    ++imports_;
    const fs::path file = folder_.Path() / "track.gpx";
    fakes::WriteFile(file, gpx + "</trkseg></trk></gpx>");
    return file;
  }

  std::vector<std::string> ImportCommand(const fs::path& gpx) const {
    return {PALLOMIR_STATION, "--data", Data(), "import", "--unit", kUnit, "--description", "Van", gpx};
  }

  void RunImport(const fs::path& gpx) {
    const auto start = Clock::now();
    Process import(ImportCommand(gpx));
    MUST(import.Wait() == 0, "%s", import.Output().c_str());
    importTime_ = std::chrono::duration_cast<microseconds>(Clock::now() - start);
    stored_.merge(next_);
    next_.clear();
  }

  std::set<std::uint32_t> StoredTimes() const {
    const station::DataFileIndex index = station::IndexUnitFolder(Data() / kUnit);
    for (const auto& problems : {index.problems, index.unread})
      for (const std::string& problem : problems) MUST(false, "%s", problem.c_str());
    std::set<std::uint32_t> times;
    for (const auto& file : index.files)
      for (const WireRecord& record : station::ReadDataFile(file.path).records) times.insert(record.time);
    return times;
  }

  void KillImport() {
    if (imports_ == kImportsAFolder) FreshData();
    const fs::path gpx = NextGpx();
    {
      Process import(ImportCommand(gpx));
      Pause(importTime_ * 5 / 4);
      import.Signal(SIGKILL);
      import.Wait();
    }
    importsInside_ += fs::exists(Data() / ".incoming" / kUnit);
    std::set<std::uint32_t> after = stored_;
    after.insert(next_.begin(), next_.end());
    const auto found = StoredTimes();
    MUST(found == stored_ || found == after, "%zu of %zu records", found.size(), after.size());
    ++(found == after ? importsNew_ : importsOld_);
    std::string problem;
    const auto descriptions = station::ReadDescriptions(Data(), problem);
    MUST(problem.empty(), "%s", problem.c_str());
    MUST(descriptions.contains(kUnit) && descriptions.at(kUnit) == "Van", "the description is gone");
    RunImport(gpx);  // the next one works, whatever the killed one left behind
    MUST(StoredTimes() == stored_, "after the import that followed");
  }

  void KillClientAndStation(bool whileEnding) {
    Process station({PALLOMIR_STATION, "--address", kAddress, "--data", Data(), "--demo", "off"});
    MUST(station.Await("pallomir-station ready"), "%s", station.Output().c_str());
    const auto start = Clock::now();
    Process client({(folder_.Path() / "app/pallomir").string()},
                   fakes::ClientEnvironment(folder_.Path(), "offscreen"));
    if (whileEnding) {
      MUST(client.Await("map page "), "%s", client.Output().c_str());
      startTime_ = std::chrono::duration_cast<microseconds>(Clock::now() - start);
      client.Signal(SIGTERM);
      Pause(milliseconds(40));
      ++clientsEnding_;
    } else {
      Pause(startTime_);
      station.Signal(SIGKILL);
      Pause(startTime_ / 4);
    }
    client.Signal(SIGKILL);
    client.Wait();
    station.Signal(SIGKILL);
    MUST(station.Wait() == -SIGKILL, "%s", station.Output().c_str());
    const std::string* units = nullptr;
    const SettingsTable table = WholeSettings(Registry());
    units = table.Find(std::string(kKeyPrefix) + "Mobile Units");
    MUST(units && *units == UnitList(), "the units are gone");
  }

  std::mt19937 random_;
  fakes::TemporaryFolder folder_;
  int dataNumber_ = 0;
  int imports_ = 0;
  std::set<std::uint32_t> stored_;
  std::set<std::uint32_t> next_;
  microseconds importTime_{0};
  microseconds startTime_ = std::chrono::seconds(1);
  int writersInside_ = 0;
  int zonesInside_ = 0;
  int importsOld_ = 0;
  int importsNew_ = 0;
  int importsInside_ = 0;
  int clientsEnding_ = 0;
};

}  // namespace
}  // namespace pallomir::e2e

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 200;
  const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device()();
  std::printf("seed %u\n", seed);
  std::fflush(stdout);
  pallomir::e2e::Run run(seed);
  for (int i = 1; i <= rounds; ++i) {
    run.Round(i);
    if (i % 20 == 0 || i == rounds) run.Report(i);
  }
  return 0;
}
