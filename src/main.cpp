#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/trace.h"
#include "base/whole_file.h"
#include "platform/qt/detached_starter.h"
#include "platform/qt/local_instance_signal.h"
#include "platform/qt/lock_file_mutex.h"
#include "platform/qt/qt_beeper.h"
#include "platform/qt/qt_browser.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_endpoints.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_folders.h"
#include "platform/qt/qt_question_box.h"
#include "platform/qt/tile_scheme.h"
#include "platform/qt/user_registry_file.h"
#include "shell/client.h"
#include "shell/deployment.h"
#include "shell/formMain.h"
#include "shell/instance_guard.h"
#include "shell/settings_store.h"
#include "ui/question_queue.h"

namespace pallomir {
namespace {

Deployment ReadDeployment(const Folders& folders, Trace& trace) {
  constexpr std::size_t kMaxSize = 64 * 1024;
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

/// The ports on this platform, and the client on them. Members stand in the order in which they need each
/// other.
class Program {
 public:
  int Run() {
    GuardInstance(
        mutex_, registry_, signal_, questions_, [this] { Start(); }, [] { QCoreApplication::exit(0); });
    const EndSignals endSignals([this] {
      if (client_) {
        window_->Close();
      } else {
        QCoreApplication::exit(0);
      }
    });
    const int exitCode = QApplication::exec();
    questions_.Close();
    return exitCode;
  }

 private:
  void Start() {
    browser_ = std::make_unique<QtBrowser>(FilesForThePage(folders_), trace_);
    window_ = std::make_unique<formMain>(browser_->Widget());
    questionBox_.SetWindow(window_.get());
    client_ = std::make_unique<Client>(Ports{
        *window_, *window_, *browser_, locator_, probe_, data_, loop_, clock_, questions_, settings_,
        registry_, mutex_, signal_, beeper_, programs_, trace_, folders_, ReadDeployment(folders_, trace_)});
    window_->Attach(*client_, questions_);
    client_->Load();
  }

  QtClock clock_;
  Trace trace_{[this] { return clock_.Seconds(); },
               [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); }};
  Folders folders_ = SystemFolders();
  QtEventLoop loop_;
  QtQuestionBox questionBox_;
  QuestionQueue questions_{questionBox_};
  UserRegistryFile registry_;
  LockFileMutex mutex_;
  LocalInstanceSignal signal_{kInstanceMutex, trace_};
  SettingsStore settings_{folders_.commonData, [this](const std::string& line) { trace_.Line(line); }};
  QtBeeper beeper_;
  DetachedStarter programs_;
  QtDatagramEndpoint locator_;
  QtStreamEndpoint probe_;
  QtStreamEndpoint data_;
  std::unique_ptr<QtBrowser> browser_;
  std::unique_ptr<formMain> window_;
  std::unique_ptr<Client> client_;
};

}  // namespace
}  // namespace pallomir

int main(int argc, char** argv) {
  pallomir::RegisterTileScheme();
  QApplication application(argc, argv);
  QApplication::setApplicationName("pallomir");
  QApplication::setApplicationVersion(PALLOMIR_VERSION);
  // The client says when it has ended; a message may still be open after the last window has closed.
  QApplication::setQuitOnLastWindowClosed(false);
  pallomir::Program program;
  return program.Run();
}
