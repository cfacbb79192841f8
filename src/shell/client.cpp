#include "shell/client.h"

#include <string>

#include "commands/menus.h"
#include "commands/unit_menu.h"
#include "shell/flush_settings.h"

namespace pallomir {

Client::Client(const Ports& ports)
    : ports_(ports),
      choices_(
          ports.settings, [this](const std::string& complaint) { ports_.trace.Line(complaint); },
          [this](const std::string&) {
            ports_.questions.Tell("Internal error 664201: illegal value for \"AlertMethod\"");
          }),
      units_(choices_.units, ports.views.units, ports.questions),
      service_(ports.programs, ports.loop, ports.questions, ports.trace, ports.folders.application),
      feed_({ports.wsClientA, ports.wsClientB, ports.wsClientC, ports.loop, ports.clock, ports.questions,
             ports.trace},
            ports.views.feed, book_, FeedHost()),
      frame_(ports.views.frame, ports.window, choices_.window, ports.loop, ports.trace),
      focus_(ports.views.frame, ports.loop),
      mapUpdating_(ports.views.boxes, ports.trace,
                   [this] { return map_->IsRebuilding() || tmrRedraw_->IsEnabled(); }) {
  frame_.laidOut = [this] { OnLaidOut(); };
  service_.busyChanged = [this] { ServiceBusyChanged(); };
  units_.listChanged = [this] { ShowUnitsInMenu(menus_, units_.List()); };
  units_.flagsChanged = [this] { ShowUnitFlags(menus_, units_.List()); };
  units_.displayedChanged = [this] { MapReload(); };
  BuildMenus(menus_);
  HandleCommands();
  menus_.chosen = [this](const MenuItem& item) { MenuChosen(item); };
  map_ = std::make_unique<MapBridge>(
      ports_.browser, ports_.loop, ports_.trace, ports_.folders, ports_.deployment.webSite, view_,
      [this](const std::string& text) { ports_.questions.Tell(text); }, MapHost());
  mapCommands_ = std::make_unique<MapCommands>(menus_, handlers_, map_->Form(), ports_.view);
  CreateTimers();
}

Client::~Client() = default;

void Client::CreateTimers() {
  const auto create = [this](const char* name, int interval, void (Client::*tick)()) {
    return ports_.loop.CreateTimer(name, interval, [this, tick] { (this->*tick)(); });
  };
  tmrRedraw_ = create("tmrRedraw", 1000, &Client::OnRedrawTick);
  boxTimer_ = create("BoxTimer", 1000, &Client::OnBoxTick);
  tmrP_ = create("tmrP", 100, &Client::OnCaptureTick);
  tmrDTP_ = create("tmrDTP", 5000, &Client::OnPickerGraceTick);
  tmrTimelineInfo_ = create("tmrTimelineInfo", 10'000, &Client::OnTimelineInfoTick);
}

void Client::Unload() {
  if (closing_) return;
  frame_.Store();
  closing_ = true;
  frame_.Close();
  focus_.Close();
  service_.Close();
  Run(seams.stopSound);
  HidePointMarker();
  for (Timer* timer :
       {tmrRedraw_.get(), boxTimer_.get(), tmrP_.get(), tmrTimelineInfo_.get(), tmrDTP_.get()}) {
    timer->SetEnabled(false);
  }
  ports_.views.boxes.CloseWindows();
  ports_.instanceSignal.Stop();
  FlushSettings(ports_.settings, ports_.questions, [this] {
    const auto end = [this] { ports_.views.boxes.EndApplication(0); };
    if (isMutexReleased_) {
      end();
    } else {
      ReleaseMutex(end);
    }
  });
  feed_.Close();
  map_->Close();
  ports_.trace.Line("end of the session");
}

// `then` follows the answer to the message of a failure.
void Client::ReleaseMutex(const std::function<void()>& then) {
  const int error = ports_.mutex.Release();
  if (error != 0) {
    ports_.questions.Tell("Mutex Release Error: " + std::to_string(error) +
                              "\nhMutex = " + std::to_string(ports_.mutex.Handle()),
                          "Pallomir", Question::Icon::kNone, [then](const Answer&) { then(); });
  }
  ports_.mutex.Close();
  if (error == 0) then();
}

Millis Client::NowLocal() const { return ToLocalTime(ports_.clock.NowUtc(), utcOffsetMinutes_); }

}  // namespace pallomir
