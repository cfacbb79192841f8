#include "program.h"

#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <utility>
#include <vector>

#include "base/whole_file.h"
#include "platform/qt/tile_scheme.h"
#include "shell/deployment.h"

namespace pallomir {
namespace {

Deployment ReadDeployment(const Folders& folders, Trace& trace) {
  constexpr std::size_t kMaxSize = std::size_t{64} * 1024;
  const auto file = folders.application / "deployment.ini";
  std::error_code error;
  const auto text = ReadWholeFile(file, kMaxSize, error);
  if (!text)
    trace.Line(file.string() + " can't be read (" + error.message() + "): the shipped values are used");
  std::vector<std::string> complaints;
  Deployment deployment = ParseDeployment(text.value_or(""), complaints);
  for (const std::string& complaint : complaints) trace.Line("deployment.ini: " + complaint);
  return deployment;
}

TileFiles FilesForThePage(const Folders& folders) {
  const TileFolders tiles = FoldersOfTiles(folders);
  return {{tiles.track, tiles.zone},
          {folders.application / kBlankTile, folders.application / kAlertedTile,
           folders.application / kNotAlertedTile}};
}

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the event loop, so that a client that is told to end by
/// the system ends as by its close button. One object at a time.
class EndSignals {
 public:
  explicit EndSignals(std::function<void()> wanted) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets_) != 0) return;
    notifier_ = std::make_unique<QSocketNotifier>(sockets_[1], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [wanted = std::move(wanted)] {
                       char byte = 0;
                       while (::read(sockets_[1], &byte, 1) > 0) {
                       }
                       wanted();
                     });
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) ::signal(number, &EndSignals::Wake);
  }

 private:
  static void Wake(int) {
    const char byte = 0;
    if (::write(sockets_[0], &byte, 1) < 0) return;
  }

  static inline int sockets_[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace

Program::Program(Folders folders, std::function<void(const std::string&)> traced)
    : folders_(std::move(folders)), trace_([this] { return clock_.Seconds(); }, std::move(traced)) {}

int Program::Run() {
  // The client says when it has ended; a message may still be open after the last window has closed.
  QApplication::setQuitOnLastWindowClosed(false);
  GuardInstance(
      mutex_, registry_, signal_, questions_, [this] { Start(); }, [] { QCoreApplication::exit(0); });
  const EndSignals endSignals([this] {
    if (client_) {
      window_->close();
    } else {
      QCoreApplication::exit(0);
    }
  });
  const int exitCode = QApplication::exec();
  questions_.Close();
  return exitCode;
}

void Program::Start() {
  browser_ = std::make_unique<QtBrowser>(FilesForThePage(folders_), trace_);
  window_ = std::make_unique<formMain>(browser_->Widget());
  zoneWindows_ = std::make_unique<ZoneWindows>(window_.get());
  alertWindows_ = std::make_unique<AlertWindows>(*window_);
  journalWindows_ = std::make_unique<JournalWindows>(*window_);
  pointTableWindows_ = std::make_unique<PointTableWindows>(*window_);
  visitWindows_ = std::make_unique<VisitWindows>(*window_);
  liveWindows_ = std::make_unique<LiveWindows>(*window_);
  questionBox_.SetWindow(window_.get());
  client_ = std::make_unique<Client>(Ports{
      .views = ViewsOf(*window_, *zoneWindows_, *alertWindows_, *journalWindows_, *pointTableWindows_,
                       *visitWindows_, *liveWindows_),
      .network = {locator_, probe_, data_},
      .desktop = {window_->System(), *browser_, questions_, beeper_, sound_, notifier_, programs_, web_},
      .storage = {settings_, registry_, folders_},
      .instance = {mutex_, signal_},
      .loop = loop_,
      .clock = clock_,
      .trace = trace_,
      .deployment = ReadDeployment(folders_, trace_)});
  window_->Attach(client_->RoomsOfWindow());
  alertWindows_->Attach(client_->Menus());
  client_->Load();
}

}  // namespace pallomir
