#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/check_code.h"
#include "fakes/fake_alerts.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_journal_view.h"
#include "fakes/fake_live_view.h"
#include "fakes/fake_network.h"
#include "fakes/fake_point_table_view.h"
#include "fakes/fake_programs.h"
#include "fakes/fake_system.h"
#include "fakes/fake_view.h"
#include "fakes/fake_visits_view.h"
#include "fakes/fake_web_query.h"
#include "fakes/fake_zones_view.h"
#include "fakes/temporary_folder.h"
#include "shell/client.h"

namespace pallomir::fakes {

/// A client on fake ports, with small words for what the outside does.
class ClientHarness {
 public:
  ClientHarness() {
    for (const char* folder : {"app", "data", "home", "home/Application Data"}) {
      std::filesystem::create_directory(folders.Path() / folder);
    }
    WriteFile(folders.Path() / "app" / "ZoneMenus_Demo.txt", "\"Alerted\"\r\n");
    MakeClient();
  }

  /// Makes a client as each run of the program does.
  void MakeClient() {
    client.reset();
    mutex.owned = true;
    client = std::make_unique<Client>(PortsFor(OwnViews(), window));
  }

  /// All fakes.
  Views OwnViews() {
    return {view, view,      view,      view,        view,           view,       view,    view,
            view, zonesView, alertView, journalView, pointTableView, visitsView, liveView};
  }

  /// The next run of the program; it is not loaded yet.
  void Restart() {
    client->Unload();
    client.reset();
    MakeClient();
  }

  /// These fakes behind other views and another window.
  Ports PortsFor(const Views& views, MainWindow& main) {
    return {.views = views,
            .network = {locator, probe, data},
            .desktop = {main, browser, questions, beeper, sound, notifier, programs, web},
            .storage = {settings,
                        registry,
                        {folders.Path() / "app", folders.Path() / "data", folders.Path() / "home"}},
            .instance = {mutex, signal},
            .loop = loop,
            .clock = clock,
            .trace = trace,
            .deployment = {}};
  }

  /// Only these units, outside demo mode.
  void UseUnits(const std::string& stored) {
    settings.values["Demo Mode"] = "False";
    settings.values["Mobile Units"] = stored;
  }

  /// A menu entry by its command or name.
  MenuItem& Entry(auto which, int index = 0) { return client->Menus().At(which, index); }
  void Choose(auto which, int index = 0) { client->MenuChosen(Entry(which, index)); }

  void Command(const std::string& text) {
    browser.beforeNavigate("http://127.0.0.1:2480/dummy/" + text);
    loop.Advance(0);
  }

  /// The locator's answer with one Base Server at 127.0.0.9.
  void AnswerLocator() { locator.arrived(LocatorAnswer("7F0000091234")); }

  void Connect() {
    AnswerLocator();
    probe.connected();
    data.connected();
  }

  /// An arrival and the pause behind it.
  void Arrive(const Bytes& bytes) {
    data.arrived(bytes);
    loop.Advance(100);
  }

  std::filesystem::path TileFolder() const { return folders.Path() / "home/Application Data/pallomir/Tiles"; }

  std::vector<std::string> TileFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TileFolder())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  std::string Trouble() const { return box.shown.empty() ? "" : box.shown.back().text; }

  TemporaryFolder folders;
  FakeView view;
  FakeZonesView zonesView;
  FakeAlertView alertView;
  FakeJournalView journalView;
  FakePointTableView pointTableView;
  FakeVisitsView visitsView;
  FakeLiveView liveView;
  FakeNotifier notifier;
  FakeWindow window;
  FakeBrowser browser;
  FakeDatagramEndpoint locator;
  FakeStreamEndpoint probe;
  FakeStreamEndpoint data;
  FakeEventLoop loop;
  FakeClock clock;
  FakeQuestionBox box;
  QuestionQueue questions{box};
  FakeSettings settings;
  FakeRegistry registry;
  FakeMutex mutex;
  FakeSignal signal;
  FakeBeeper beeper;
  FakeSoundPlayer sound{loop};
  FakeProgramStarter programs;
  FakeWebQuery web;
  std::vector<std::string> traced;
  Trace trace{[] { return 0.0; }, [this](const std::string& line) { traced.push_back(line); }};
  std::unique_ptr<Client> client;
};

/// A point as it travels; seconds count from 2026-11-22 12:00 UTC, degrees.
inline WireRecord Record(int seconds, double lat, double lng, std::uint16_t status = 0) {
  const auto time = EncodePackedTime(ToMillis({2026, 11, 22, 12, 0, 0}) + seconds * kSecond);
  return {*time, static_cast<std::int32_t>(lat * 600000), static_cast<std::int32_t>(lng * 600000), status};
}

}  // namespace pallomir::fakes
