#include <QApplication>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "base/trace.h"
#include "base/whole_file.h"
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
  const auto applicationData = folders.userProfile / "Application Data" / "pallomir";
  return {{applicationData / "Tiles", applicationData / "Tiles_Zones"},
          {folders.application / kBlankTile, folders.application / kAlertedTile,
           folders.application / kNotAlertedTile}};
}

/// The ports on this platform, and the client on them. Members stand in the order in which they need each
/// other.
class Program {
 public:
  int Run() {
    GuardInstance(
        mutex_, registry_, signal_, questions_, [this] { Start(); }, [] { QCoreApplication::exit(0); });
    const int exitCode = QApplication::exec();
    questions_.Close();
    return exitCode;
  }

 private:
  void Start() {
    browser_ = std::make_unique<QtBrowser>(FilesForThePage(folders_), trace_);
    window_ = std::make_unique<formMain>(browser_->Widget());
    questionBox_.SetWindow(window_.get());
    client_ = std::make_unique<Client>(Ports{*window_, *window_, *browser_, locator_, probe_, data_, loop_,
                                             clock_, questions_, settings_, registry_, mutex_, signal_,
                                             beeper_, trace_, folders_, ReadDeployment(folders_, trace_)});
    window_->Attach(*client_);
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
  QApplication::setApplicationDisplayName("Pallomir");
  QApplication::setApplicationVersion(PALLOMIR_VERSION);
  // The client says when it has ended; a message may still be open after the last window has closed.
  QApplication::setQuitOnLastWindowClosed(false);
  pallomir::Program program;
  return program.Run();
}
