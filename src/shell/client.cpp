#include "shell/client.h"

#include <string>

#include "commands/hotspot_menus.h"
#include "commands/menus.h"
#include "commands/service_commands.h"
#include "shell/flush_settings.h"

namespace pallomir {

Client::Client(const Ports& ports)
    : ports_(ports),
      choices_(
          ports.storage.settings, [this](const std::string& complaint) { ports_.trace.Line(complaint); },
          [this](const std::string&) {
            ports_.desktop.questions.Tell("Internal error 664201: illegal value for \"AlertMethod\"");
          }),
      units_(choices_.units, ports.views.units, ports.desktop.questions),
      choiceCommands_(menus_, handlers_, choices_, ports.desktop.questions),
      hotspots_(ports.views.hotspots, choices_.hotspots),
      localClock_(ports.clock),
      service_(ports.desktop.programs, ports.loop, ports.desktop.questions, ports.trace,
               ports.storage.folders.application),
      hold_(ports.instance.mutex, ports.instance.signal, ports.desktop.questions, ports.trace),
      demoSwitch_(choices_.demoMode, hold_, ports.storage.settings, ports.desktop.questions,
                  ports.desktop.programs, ports.storage.folders),
      feed_({ports.network, ports.loop, ports.clock, ports.desktop.questions, ports.trace}, ports.views.feed,
            units_.Book(), choices_.portBase, FeedHost()),
      zones_(ports.views.zones, ports.loop, ports.desktop.questions, ports.trace, menus_, handlers_,
             ZonesHost()),
      points_(feed_.Points(), units_.Book(), localClock_, choices_.unitOfMeasure),
      pickers_(ports.views.pickers, ports.loop, localClock_, choices_.onStartup, PickerHost()),
      timeline_(ports.views.timeline, ports.loop, ports.trace, points_, pickers_.Window(), localClock_,
                TimelineHost()),
      marks_(ports.views.marks, ports.loop, view_, points_, pickers_.Window(), MarksHost()),
      frame_(ports.views.frame, ports.desktop.window, choices_.window, ports.loop, ports.trace),
      focus_(ports.views.frame, ports.loop),
      mapUpdating_(ports.views.boxes, ports.trace,
                   [this] { return map_->IsRebuilding() || timeline_.IsRedrawDue(); }) {
  frame_.laidOut = [this] { OnLaidOut(); };
  units_.displayedChanged = [this] { MapReload(); };
  JoinServices();
  BuildMenus(menus_);
  HandleCommands();
  menus_.chosen = [this](const MenuItem& item) { MenuChosen(item); };
  menus_.closed = [this] { zones_.OfferNone(); };
  map_ = std::make_unique<MapBridge>(
      ports_.desktop.browser, ports_.loop, ports_.trace, ports_.storage.folders, ports_.deployment.webSite,
      view_, [this](const std::string& text) { ports_.desktop.questions.Tell(text); }, MapHost());
  mapCommands_ = std::make_unique<MapCommands>(menus_, handlers_, map_->Form(), ports_.views.menu);
}

Client::~Client() = default;

// The rooms that the Options menu opens.
void Client::JoinServices() {
  hotspots_.changed = [this] { ShowHotspots(menus_, hotspots_); };
  service_.busyChanged = [this] {
    ShowServiceBusy(menus_, service_.IsBusy());
    if (!closing_) feed_.ShowLamp();
  };
  demoSwitch_.leaving = [this] { frame_.Store(); };
  demoSwitch_.changed = [this] { menus_.At(Command::kDemoMode).checked = choices_.demoMode.Value(); };
  demoSwitch_.started = [this] { ports_.desktop.window.Close(); };
}

void Client::Unload() {
  if (closing_) return;
  frame_.Store();
  closing_ = true;
  frame_.Close();
  focus_.Close();
  service_.Close();
  hotspots_.Close();
  demoSwitch_.Close();
  pickers_.Close();
  timeline_.Close();
  marks_.Close();
  zones_.Close();
  ports_.views.boxes.CloseWindows();
  hold_.StopListening();
  FlushSettings(ports_.storage.settings, ports_.desktop.questions,
                [this] { hold_.Release([this] { ports_.views.boxes.EndApplication(0); }); });
  feed_.Close();
  map_->Close();
  ports_.trace.Line("end of the session");
}

}  // namespace pallomir
