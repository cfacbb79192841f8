#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <random>
#include <thread>

#include "base/number_format.h"
#include "e2e/program_folder.h"
#include "settings/settings_file.h"
#include "zones/zone_file.h"
#include "zones/zone_store.h"

// Kills client, station and what writes their files at random moments, as often as the argument says (200, if
// nothing), and looks each time whether the files are whole: kill_at_random [ROUNDS [SEED]]

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using fakes::Process;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr char kAddress[] = "127.0.63.1";  // this program's own
constexpr char kUnitList[] = "X0013A20040B1Van \"7\"~";
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
  explicit Run(unsigned seed) : random_(seed) {}

  void Round(int number) {
    KillSettingsWriter();
    KillZoneWriter();
    KillClientAndStation(number % 2 == 0);
  }

  void Report(int rounds) const {
    std::printf(
        "%d rounds: client, station and writers of settings (%d inside a write) and zones (%d inside) "
        "killed; "
        "all files whole\n",
        rounds, settingsInside_, zonesInside_);
    std::fflush(stdout);
  }

 private:
  void Pause(microseconds most) {
    std::this_thread::sleep_for(
        microseconds(std::uniform_int_distribution<std::int64_t>(0, most.count())(random_)));
  }

  // A process that writes as fast as it can, again and again, is killed; whether that was inside a write is
  // known by the file that is left.
  int KillWriter(const std::function<void(int)>& write, const fs::path& left) {
    const pid_t writer = ::fork();
    for (int i = 0; writer == 0; ++i) write(i);
    Pause(milliseconds(30));
    ::kill(writer, SIGKILL);
    int status = 0;
    ::waitpid(writer, &status, 0);
    MUST(WIFSIGNALED(status), "the writer ended by itself");
    return fs::exists(left);
  }

  static SettingsTable WholeSettings(const fs::path& file) {
    const ParsedSettings settings = ParseSettings(fakes::ReadFile(file));
    MUST(settings.damagedLines == 0, "%zu damaged lines in %s", settings.damagedLines, file.c_str());
    return settings.table;
  }

  // Two keys change together: what is read is never older than the one save between them.
  void KillSettingsWriter() {
    SettingsFile file(written_.Path(), [](const std::string& line) { std::puts(line.c_str()); });
    SettingsTable table = file.Load().table;
    const auto length = [](std::int64_t n) { return static_cast<std::size_t>(n * 37 % 5000); };
    const std::string count = std::string(kKeyPrefix) + "Count", text = std::string(kKeyPrefix) + "Text";
    const fs::path path = written_.Path() / "pallomir/Registry.txt";
    settingsInside_ += KillWriter(
        [&](int i) {
          table.Set(count, std::to_string(i));
          file.Write(table);
          table.Set(text, std::string(length(i), 'x'));
          file.Write(table);
        },
        path.string() + ".new");
    if (!fs::exists(path)) return;  // killed before its first save
    const SettingsTable stored = WholeSettings(path);
    MUST(stored.Find(count), "no Count");
    if (!stored.Find(text)) return;
    const auto i = ParseInteger(*stored.Find(count)).value_or(-1);
    const std::size_t size = stored.Find(text)->size();
    // A first save follows the old run's text.
    MUST(i == 0 || size == length(i) || size == length(i - 1), "Text is none of Count");
  }

  // Changes one list into another and back, by saves and by undoing them.
  void KillZoneWriter() {
    const fs::path path = written_.Path() / "ZoneMenus.txt";
    const ZoneTree lists[] = {ZoneList(0), ZoneList(1)};
    ZoneStore store(path);
    MUST(store.Load().message.empty(), "zones can't be read");
    zonesInside_ += KillWriter(
        [&](int i) {
          const std::string problem = i % 3 == 2 ? store.Undo() : store.Save(lists[i % 2]);
          if (!problem.empty()) ::_exit(1);
        },
        path.string() + ".new");
    const std::string zones = fakes::ReadFile(path);
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

  void KillClientAndStation(bool whileEnding) {
    Process station({PALLOMIR_STATION, "--address", kAddress, "--data", program_.Data(), "--demo", "off"});
    MUST(station.Await("pallomir-station ready"), "%s", station.Output().c_str());
    const auto start = Clock::now();
    Process client({(program_.App() / "pallomir").string()},
                   fakes::ClientEnvironment(program_.Path(), "offscreen"));
    if (whileEnding) {
      MUST(client.Await("map page "), "%s", client.Output().c_str());
      startTime_ = std::chrono::duration_cast<microseconds>(Clock::now() - start);
      client.Signal(SIGTERM);
      Pause(milliseconds(40));
    } else {
      Pause(startTime_);
      station.Signal(SIGKILL);
      Pause(startTime_ / 4);
    }
    client.Signal(SIGKILL);
    client.Wait();
    station.Signal(SIGKILL);
    MUST(station.Wait() == -SIGKILL, "%s", station.Output().c_str());
    const SettingsTable table = WholeSettings(program_.Registry());
    const std::string* units = table.Find(std::string(kKeyPrefix) + "Mobile Units");
    MUST(units && *units == kUnitList, "the units are gone");
  }

  std::mt19937 random_;
  const ProgramFolder program_{kAddress, {{"Mobile Units", kUnitList}}};
  const fakes::TemporaryFolder written_;
  microseconds startTime_ = std::chrono::seconds(1);
  int settingsInside_ = 0;
  int zonesInside_ = 0;
};

}  // namespace
}  // namespace pallomir::e2e

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 200;
  const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device()();
  std::printf("seed %u\n", seed);
  pallomir::e2e::Run run(seed);
  for (int i = 1; i <= rounds; ++i) {
    run.Round(i);
    if (i % 20 == 0 || i == rounds) run.Report(i);
  }
  return 0;
}
