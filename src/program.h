#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/trace.h"
#include "platform/alsa/alsa_device.h"
#include "platform/alsa/worker_sound_player.h"
#include "platform/qt/bus_notifier.h"
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
#include "platform/qt/qt_web_query.h"
#include "platform/qt/user_registry_file.h"
#include "settings/settings_store.h"
#include "shell/client.h"
#include "shell/instance_guard.h"
#include "ui/question_queue.h"
#include "window/alert_windows_widget.h"
#include "window/formMain.h"
#include "window/journal_windows_widget.h"
#include "window/live_windows_widget.h"
#include "window/point_table_windows_widget.h"
#include "window/visit_windows_widget.h"
#include "zones/zone_windows_widget.h"

namespace pallomir {

/// The whole program: the ports on this platform, and the client on them. It needs a QApplication.
class Program {
 public:
  /// `traced` takes the lines of the progress trace.
  Program(Folders folders, std::function<void(const std::string&)> traced);

  /// Runs until the program ends; gives its exit code.
  int Run();

  // Null until this turned out to be the only instance.
  Client* TheClient() { return client_.get(); }
  QtBrowser* TheBrowser() { return browser_.get(); }

 private:
  void Start();

  // In the order in which they need each other.
  Folders folders_;
  QtClock clock_;
  Trace trace_;
  QtEventLoop loop_;
  QtQuestionBox questionBox_;
  QuestionQueue questions_{questionBox_};
  UserRegistryFile registry_;
  LockFileMutex mutex_{SettingsFolder(folders_.commonData)};
  LocalInstanceSignal signal_{SettingsFolder(folders_.commonData), kInstanceMutex, trace_};
  SettingsStore settings_{folders_.commonData, loop_, [this](const std::string& line) { trace_.Line(line); },
                          [this](const std::string& sentence) {
                            questions_.Tell(sentence, "Pallomir", Question::Icon::kExclamation);
                          }};
  QtBeeper beeper_;
  WorkerSoundPlayer sound_{std::make_unique<AlsaDevice>(),
                           [this](std::function<void()> work) { loop_.Post(std::move(work)); }};
  BusNotifier notifier_;
  DetachedStarter programs_;
  QtWebQuery web_;
  QtDatagramEndpoint locator_;
  QtStreamEndpoint probe_;
  QtStreamEndpoint data_;
  std::unique_ptr<QtBrowser> browser_;
  std::unique_ptr<formMain> window_;
  std::unique_ptr<ZoneWindows> zoneWindows_;
  std::unique_ptr<AlertWindows> alertWindows_;
  std::unique_ptr<JournalWindows> journalWindows_;
  std::unique_ptr<PointTableWindows> pointTableWindows_;
  std::unique_ptr<VisitWindows> visitWindows_;
  std::unique_ptr<LiveWindows> liveWindows_;
  std::unique_ptr<Client> client_;
};

}  // namespace pallomir
