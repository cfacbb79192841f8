#include "shell/client.h"

#include <string>

#include "commands/menus.h"
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
      localClock_(ports.clock),
      hold_(ports.instance.mutex, ports.instance.signal, ports.desktop.questions, ports.trace),
      feed_({ports.network, ports.loop, ports.clock, ports.desktop.questions, ports.trace}, ports.views.feed,
            units_.Book(), choices_.portBase, FeedHost()),
      map_(
          ports.desktop.browser, ports.loop, ports.trace, ports.storage.folders, ports.deployment.webSite,
          view_, [this](const std::string& text) { ports_.desktop.questions.Tell(text); }, MapHost()),
      clickedAddress_(map_.Form()),
      mapCommands_(menus_, handlers_, map_, ports.views.menu),
      points_(feed_.Points(), units_.Book(), localClock_, choices_.unitOfMeasure),
      pickers_(ports.views.pickers, ports.loop, localClock_, choices_.onStartup, PickerHost()),
      timeline_(ports.views.timeline, ports.loop, ports.trace, points_, pickers_.Window(), localClock_,
                TimelineHost()),
      marks_(ports.views.marks, ports.loop, view_, points_, pickers_.Window(), MarksHost()),
      frame_(ports.views.frame, ports.desktop.window, choices_.window, ports.loop, ports.trace),
      focus_(ports.views.frame, ports.loop),
      mapUpdating_(ports.views.boxes, ports.trace,
                   [this] { return map_.IsRebuilding() || timeline_.IsRedrawDue(); }),
      options_(Rooms()),
      zones_(Rooms()),
      journal_(Rooms(), zones_),
      pointTables_(Rooms()),
      alerts_(Rooms()),
      visits_(Rooms(), zones_),
      live_(Rooms()) {
  alerts_.batchHoldsAlert = [this] { return journal_.HasBatchAlert(); };
  journal_.foundLate = [this] { alerts_.OnFoundLate(); };
  frame_.laidOut = [this] { OnLaidOut(); };
  units_.displayedChanged = [this] { MapReload(); };
  BuildMenus(menus_);
  HandleCommands();
  menus_.chosen = [this](const MenuItem& item) { MenuChosen(item); };
  menus_.closed = [this] { zones_.OfferNone(); };
}

Client::~Client() = default;

JoinedRooms Client::Rooms() {
  return {ports_, hold_,           choices_, localClock_, menus_,    handlers_, units_, feed_,
          map_,   clickedAddress_, points_,  pickers_,    timeline_, marks_,    frame_};
}

void Client::Unload() {
  if (closing_) return;
  frame_.Store();
  closing_ = true;
  frame_.Close();
  focus_.Close();
  pickers_.Close();
  timeline_.Close();
  marks_.Close();
  for (Joint* joint : joints_) joint->Close();
  ports_.views.boxes.CloseWindows();
  hold_.StopListening();
  FlushSettings(ports_.storage.settings, ports_.desktop.questions,
                [this] { hold_.Release([this] { ports_.views.boxes.EndApplication(0); }); });
  feed_.Close();
  map_.Close();
  ports_.trace.Line("end of the session");
}

}  // namespace pallomir
