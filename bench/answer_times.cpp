#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>
#include <QWebEngineView>
#include <algorithm>
#include <asio/io_context.hpp>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/qt/graphics.h"
#include "platform/qt/tile_scheme.h"
#include "program.h"
#include "settings/settings_store.h"
#include "station/station.h"
#include "station/store/open_store.h"

// How fast the whole program answers, measured in it: a station in a thread of its own streams a million
// points (or as many as the first argument says) to the real window with the real page. Prints the longest
// events (for which the window does not answer), how long tile questions and changes of the view took as the
// page sees them, and when the first track was handed out. A second argument is the window's size
// ("1920x1080"), a third names a file for a picture of the window.

namespace pallomir {
namespace {

namespace fs = std::filesystem;

constexpr char kAddress[] = "127.0.88.1";
constexpr int kUnits = 12;
constexpr int kFits = 12;

double NowMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

// When this process began (the time for making the scene is left out of what is printed), to a hundredth of a
// second, on the clock of NowMs().
double ProcessStartMs() {
  std::ifstream file("/proc/self/stat");
  const std::string line((std::istreambuf_iterator<char>(file)), {});
  std::istringstream fields(line.substr(line.rfind(')') + 2));
  std::string field;
  constexpr int kStartTime = 20;  // of those behind the name: ticks since the computer's start
  for (int i = 0; i < kStartTime; ++i) fields >> field;
  const double start = std::stod(field) / static_cast<double>(::sysconf(_SC_CLK_TCK));
  timespec now{};
  ::clock_gettime(CLOCK_BOOTTIME, &now);
  return NowMs() - 1000 * (static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9 - start);
}

std::string UnitId(int unit) {
  char id[16];
  std::snprintf(id, sizeof id, "%012X", 0xB0 + unit);
  return id;
}

// A wandering course of one fix a second that ends a minute ago.
std::vector<WireRecord> Course(int unit, std::size_t count) {
  std::mt19937 random(static_cast<unsigned>(unit));
  std::normal_distribution<double> turn(0, 0.15);
  double lat = 40.62, lng = -75.37, heading = unit;
  const auto end = static_cast<Millis>(NowMs()) / kSecond * kSecond - kMinute;
  std::vector<WireRecord> records(count);
  for (std::size_t i = 0; i < count; ++i) {
    heading += turn(random);
    lat += 0.00012 * std::cos(heading) + (40.62 - lat) * 0.0002;
    lng += 0.00016 * std::sin(heading) + (-75.37 - lng) * 0.0002;
    records[i] = {*EncodePackedTime(end - static_cast<Millis>(count - 1 - i) * kSecond),
                  static_cast<std::int32_t>(lat * 600000), static_cast<std::int32_t>(lng * 600000), 100};
  }
  return records;
}

struct Scene {
  fs::path folder;
  std::size_t points;
  int width;
  int height;

  Folders Make() const {
    for (const char* name : {"profile", "share/pallomir/Data", "config", "runtime"})
      fs::create_directories(folder / name);
    fs::permissions(folder / "runtime", fs::perms::owner_all);
    fs::copy(PALLOMIR_FOLDER, folder / "app", fs::copy_options::recursive);
    std::ofstream(folder / "app/deployment.ini")
        << "WebsiteServer=" << kAddress << "\nWebSite=" << kAddress << ":2480\n";
    std::string units, problem;
    const auto store = station::OpenStore(folder / "share/pallomir/Data", [](const std::string&) {});
    const auto writer = store->StartWriting({}, problem);
    if (!writer) {
      std::fprintf(stderr, "%s\n", problem.c_str());
      std::exit(1);
    }
    for (int unit = 0; unit < kUnits; ++unit) {
      units += "X" + UnitId(unit) + "Unit " + std::to_string(unit) + "~";
      const auto outcome = writer->Merge(UnitId(unit), Course(unit, points / kUnits));
      if (!outcome.error.empty()) std::fprintf(stderr, "%s\n", outcome.error.c_str());
    }
    std::ofstream settings(folder / "share/pallomir/Registry.txt", std::ios::binary);
    const auto set = [&](const char* key, const std::string& value) {
      settings << SettingsLine("pallomir browser~Startup~" + std::string(key), value) << "\r\n";
    };
    set("Demo Mode", "False");
    set("LoadOnStartup", "Load Last 24 Hrs Data");
    set("Mobile Units", units);
    set("WindowState", "0");
    set("WindowPos_L", "0");
    set("WindowPos_T", "0");
    set("WindowPos_W", std::to_string(width));
    set("WindowPos_H", std::to_string(height));
    return {folder / "app", folder / "share", folder / "profile"};
  }

  void Announce() const {
    const auto put = [&](const char* name, const char* below) {
      ::setenv(name, (folder / below).c_str(), 1);
    };
    put("HOME", "profile");
    put("UserProfile", "profile");
    put("XDG_DATA_HOME", "share");
    put("XDG_CONFIG_HOME", "config");
    put("XDG_RUNTIME_DIR", "runtime");
  }
};

/// Times every event: what the event loop can't look at others for. A timer that wants to tick every two
/// milliseconds tells for how long nothing was looked at, however many events that were. Painting is told
/// apart from the rest: the engine composes the whole page in it, which on a machine without a graphics
/// processor takes most of the time.
class TimedApplication : public QApplication {
  static constexpr int kBeat = 2;  // milliseconds

 public:
  TimedApplication(int& argc, char** argv) : QApplication(argc, argv) {
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.callOnTimeout([this] {
      longestSilence_ = std::max(longestSilence_, NowMs() - lastBeat_);
      lastBeat_ = NowMs();
    });
    beat_.start(kBeat);
  }

  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_++ > 0) {
      const bool handled = QApplication::notify(receiver, event);
      --depth_;
      return handled;
    }
    const QEvent::Type type = event->type();
    const double begin = NowMs();
    const bool handled = QApplication::notify(receiver, event);
    --depth_;
    if (std::exchange(isOurs_, false)) return handled;
    double& longest = type == QEvent::UpdateRequest || type == QEvent::Paint ? longestPaint_ : longestOther_;
    longest = std::max(longest, NowMs() - begin);
    return handled;
  }

  /// The event that runs now does not count.
  void Begin() {
    longestPaint_ = longestOther_ = longestSilence_ = 0;
    lastBeat_ = NowMs();
    isOurs_ = true;
  }
  void Print(const char* phase) const {
    std::printf("%s: longest event %.1f ms, longest paint %.1f ms, longest silence %.1f ms\n", phase,
                longestOther_, longestPaint_, longestSilence_);
    std::fflush(stdout);
  }

 private:
  int depth_ = 0;
  bool isOurs_ = false;
  QTimer beat_;
  double lastBeat_ = NowMs();
  double longestSilence_ = 0;
  double longestPaint_ = 0;
  double longestOther_ = 0;
};

// Notes when each tile question leaves the page and when its answer arrives, how long the page takes to show
// another view, and its scripts that take longer than 50 ms.
constexpr char kSpy[] = R"(
  window.asked = []; window.answered = []; window.drawn = []; window.long = [];
  new PerformanceObserver((list) => long.push(...list.getEntries().map(({ duration }) => duration)))
    .observe({ type: 'longtask', buffered: true });
  const src = Object.getOwnPropertyDescriptor(HTMLIFrameElement.prototype, 'src');
  Object.defineProperty(HTMLIFrameElement.prototype, 'src', { configurable: true, get: src.get,
    set(value) { if (String(value).includes('/dummy/TT')) asked.push(performance.timeOrigin + performance.now());
                 src.set.call(this, value); } });
  const field = document.querySelector('[name=TxtTT]');
  const fit = document.querySelector('[name=TxtF]');
  const fitValue = Object.getOwnPropertyDescriptor(fit, 'value');
  Object.defineProperty(fit, 'value', { configurable: true, get: fitValue.get, set(text) {
    const begin = performance.now();
    // The second frame begins when the first one, with the new view, is on its way to the screen.
    if (text) requestAnimationFrame(() => requestAnimationFrame(() => drawn.push(performance.now() - begin)));
    fitValue.set.call(this, text);
  } });
  const value = Object.getOwnPropertyDescriptor(field, 'value');
  Object.defineProperty(field, 'value', { configurable: true, get: value.get,
    set(text) { if (text) answered.push(performance.timeOrigin + performance.now()); value.set.call(this, text); } });
)";

class Run {
 public:
  Run(TimedApplication& application, Program& program, std::size_t points, QString picture, double preparing)
      : application_(application),
        program_(program),
        points_(points),
        picture_(std::move(picture)),
        start_(ProcessStartMs() + preparing) {
    QObject::connect(&step_, &QTimer::timeout, [this] { Step(); });
    step_.start(20);
  }

  void Traced(const std::string& line) {
    if (std::getenv("ANSWER_TIMES_TRACE")) std::fprintf(stderr, "%s\n", line.c_str());
    if (line.find("map page ready") != line.npos) pageReady_ = true;
    if (line.find("track tile ") != line.npos) {
      if (firstTile_ == 0) firstTile_ = NowMs();
      lastTile_ = NowMs();
    }
    if (line.find("written") != line.npos) rebuilds_.push_back(NowMs());
  }

 private:
  QWebEngineView* View() { return dynamic_cast<QWebEngineView*>(program_.TheBrowser()->Widget()); }

  void Step() {
    Client* client = program_.TheClient();
    if (!client) return;
    switch (phase_) {
      case 0:
        if (pageReady_) Next("start of window and page");
        break;
      case 1:
        View()->page()->runJavaScript(kSpy);
        Next(nullptr);
        break;
      case 2:
        if (client->Points().PointCount() >= points_ / kUnits * kUnits && firstTile_ != 0 && IsQuiet()) {
          std::printf("%zu points; first track tile handed out %.0f ms after the start of the process\n",
                      client->Points().PointCount(), firstTile_ - start_);
          if (!picture_.isEmpty()) View()->window()->grab().save(picture_);
          Next("points arriving and drawn");
        }
        break;
      case 3:
        if (!IsQuiet()) break;
        if (fits_ < kFits) {
          client->FitByUser(static_cast<std::size_t>(++fits_ % 2));
          lastTile_ = NowMs();
        } else {
          Next("fits to one unit and to all");
          step_.setInterval(1500);
        }
        break;
      case 4:
        if (types_ < std::string_view("SHTM").size()) {
          client->KeyDown(0, "SHTM"[types_++]);
        } else {
          Next("all map types");
        }
        break;
      default:
        step_.stop();
        Report();
    }
  }

  bool IsQuiet() const { return NowMs() - lastTile_ > 1000; }

  void Next(const char* what) {
    if (what) application_.Print(what);
    application_.Begin();
    ++phase_;
  }

  void Report() {
    View()->page()->runJavaScript(
        "JSON.stringify([asked, answered, drawn, long])", [this](const QVariant& text) {
          const QJsonArray both = QJsonDocument::fromJson(text.toString().toUtf8()).array();
          const QJsonArray asked = both.at(0).toArray(), answered = both.at(1).toArray();
          std::vector<double> calm, withRebuild, drawn;
          for (const auto& time : both.at(2).toArray()) drawn.push_back(time.toDouble());
          qsizetype next = 0;
          for (const auto& answer : answered) {
            // The question before it; the first answers may belong to questions that went out before we
            // looked.
            const double to = answer.toDouble();
            while (next < asked.size() && asked.at(next).toDouble() <= to) ++next;
            if (next == 0) continue;
            const double from = asked.at(next - 1).toDouble();
            const bool rebuilt = std::any_of(rebuilds_.begin(), rebuilds_.end(),
                                             [&](double at) { return at >= from - 1 && at <= to + 1; });
            (rebuilt ? withRebuild : calm).push_back(to - from);
          }
          Print("tile question, no rebuild due", calm);
          Print("tile question with a rebuild", withRebuild);
          constexpr double kQuickView = 100;
          Print("change of the view", drawn, kQuickView);
          std::vector<double> scripts;
          for (const auto& time : both.at(3).toArray()) scripts.push_back(time.toDouble());
          Print("scripts of more than 50 ms", scripts, kQuickView);
          QCoreApplication::exit(0);
        });
  }

  static void Print(const char* what, std::vector<double> times, double wanted = 20) {
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    const auto at = [&](double share) {
      return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    const auto quick = std::upper_bound(times.begin(), times.end(), wanted) - times.begin();
    std::printf("%s: %zu, %zd within %.0f ms, median %.1f ms, longest %.1f ms\n", what, times.size(), quick,
                wanted, at(0.5), times.back());
  }

  TimedApplication& application_;
  Program& program_;
  std::size_t points_;
  QString picture_;
  double start_;
  QTimer step_;
  int phase_ = 0;
  int fits_ = 0;
  std::size_t types_ = 0;
  bool pageReady_ = false;
  double firstTile_ = 0;
  double lastTile_ = 0;
  std::vector<double> rebuilds_;
};

int Measure(int argc, char** argv) {
  const double begin = NowMs();
  const std::size_t points = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1'000'000;
  std::string pattern = (fs::temp_directory_path() / "pallomir-answers-XXXXXX").string();
  int width = 1920, height = 1080;
  if (argc > 2) std::sscanf(argv[2], "%dx%d", &width, &height);
  const Scene scene{::mkdtemp(pattern.data()), points, width, height};
  const Folders folders = scene.Make();
  scene.Announce();

  station::Options options;
  options.address = kAddress;
  options.webRoot = WEB_FOLDER;
  options.data = scene.folder / "share/pallomir/Data";
  options.isDemoOn = false;
  asio::io_context context;
  station::Station station(context, options, [](const std::string&) {});
  if (const std::string error = station.Open(); !error.empty()) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  std::thread serving([&] { context.run(); });

  const double preparing = NowMs() - begin;
  RegisterTileScheme();
  int exitCode = 0;
  {
    TimedApplication application(argc, argv);
    ChooseGraphics();
    Run* run = nullptr;
    Program program(folders, [&](const std::string& line) {
      if (run) run->Traced(line);
    });
    Run measured(application, program, points, argc > 3 ? argv[3] : "", preparing);
    run = &measured;
    exitCode = program.Run();
  }
  context.stop();
  serving.join();
  fs::remove_all(scene.folder);
  return exitCode;
}

}  // namespace
}  // namespace pallomir

int main(int argc, char** argv) { return pallomir::Measure(argc, argv); }
