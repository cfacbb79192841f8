#include <string>

#include "shell/client.h"

// What the page wants of the rest of the program.

namespace pallomir {

MapBridge::Host Client::MapHost() {
  MapBridge::Host host;
  host.isClosing = [this] { return closing_; };
  host.browserSize = [this] { return ports_.views.frame.BrowserSize(); };
  host.drawing = [this] { return mapCommands_.Drawing(points_.Tracks()); };
  host.viewMoved = [this] { marks_.HidePointMarker(); };
  host.rebuildFailed = [this](const DeleteError& error) {
    ports_.desktop.questions.Tell("Error " + std::to_string(error.number) + ":\n" + error.description,
                                  "Pallomir", Question::Icon::kError,
                                  [this](const Answer&) { ports_.desktop.window.Close(); });
  };
  host.rebuildEnded = [this] {
    mapUpdating_.HideWhenDone();
    pointTables_.Tables().OnTilesDrawn();
  };
  host.reached = [this](int line) { ports_.views.boxes.TickStatus(line); };
  host.ready = [this] {
    ports_.views.boxes.HideSplash();
    clickedAddress_.OnPageReady();
    for (Joint* joint : joints_) joint->OnPageReady();
  };
  host.lost = [this] {
    ports_.views.boxes.HideSplash();
    clickedAddress_.OnPageLost();
    for (Joint* joint : joints_) joint->OnPageLost();
  };
  host.choices = [this] { return mapCommands_.Choices(); };
  host.pointerMoved = [this](ViewPoint at) {
    timeline_.HideInfo();
    marks_.PointerOverMap(at);
    const PageState& page = map_.Page();
    zones_.PointerMoved(page.LastMouseLat / kPositionUnitsPerDegree,
                        page.LastMouseLng / kPositionUnitsPerDegree);
  };
  host.menuWanted = [this] {
    zones_.OfferNone();
    mapCommands_.PopUpAtPointer(false);
  };
  host.menuWantedAt = [this](double lat, double lng) {
    clickedAddress_.OnClick();
    zones_.OfferZoneAt(lat, lng);
    mapCommands_.PopUpAtPointer(true);
  };
  host.addressFound = [this](const std::string& address) { clickedAddress_.OnAnswer(address); };
  return host;
}

// Shows the notice that the map is being drawn; gives the box of the enabled unit k, of all for 0.
WorldBox Client::BeginFit(std::size_t k) {
  ports_.trace.Line("Fit begin...");
  mapUpdating_.Show();
  return points_.BoxOfUnit(k);
}

}  // namespace pallomir
