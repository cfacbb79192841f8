#include <string>

#include "shell/client.h"

// What the page wants of the rest of the program.

namespace pallomir {

MapBridge::Host Client::MapHost() {
  MapBridge::Host host;
  host.isClosing = [this] { return closing_; };
  host.browserSize = [this] { return ports_.views.frame.BrowserSize(); };
  host.drawing = [this] { return Drawing(); };
  host.isTopLevelAlerted = [this] { return zones_.IsTopLevelAlerted(); };
  host.viewMoved = [this] { marks_.HidePointMarker(); };
  host.rebuildFailed = [this](const DeleteError& error) {
    ports_.desktop.questions.Tell("Error " + std::to_string(error.number) + ":\n" + error.description,
                                  "Pallomir", Question::Icon::kError,
                                  [this](const Answer&) { ports_.desktop.window.Close(); });
  };
  host.rebuildEnded = [this] { mapUpdating_.HideWhenDone(); };
  host.reached = [this](int line) { ports_.views.boxes.TickStatus(line); };
  host.ready = [this] {
    ports_.views.boxes.HideSplash();
    zones_.OnPageReady();
  };
  host.lost = [this] {
    ports_.views.boxes.HideSplash();
    zones_.OnPageLost();
  };
  host.choices = [this] { return mapCommands_->Choices(); };
  host.pointerMoved = [this](ViewPoint at) {
    timeline_.HideInfo();
    marks_.PointerOverMap(at);
    const PageState& page = map_->Page();
    zones_.PointerMoved(page.LastMouseLat / kPositionUnitsPerDegree,
                        page.LastMouseLng / kPositionUnitsPerDegree);
  };
  host.menuWanted = [this] {
    zones_.OfferNone();
    mapCommands_->PopUpAtPointer(false);
  };
  host.menuWantedAt = [this](double lat, double lng) {
    zones_.OfferZoneAt(lat, lng);
    mapCommands_->PopUpAtPointer(true);
  };
  host.shapeFinished = [this](const std::string& payload) { zones_.OnShapeFinished(payload); };
  host.shapeCancelled = [this] { zones_.OnShapeCancelled(); };
  host.shapeClosable = [this] { zones_.OnShapeClosable(); };
  return host;
}

ClientZones::Host Client::ZonesHost() {
  ClientZones::Host host;
  host.write = [this](const char* field, const std::string& text) { map_->Form().WriteZones(field, text); };
  host.zoomTo = [this](const WorldBox& box) { map_->ZoomTo(box); };
  host.endProgram = [this] { ports_.desktop.window.Close(); };
  host.inKilometers = [this] { return choices_.unitOfMeasure.Value() == 1; };
  return host;
}

TrackDrawing Client::Drawing() {
  TrackDrawing drawing;
  for (std::size_t k = 1; k <= feed_.Points().UnitCount(); ++k)
    drawing.units.push_back(feed_.Points().Track(k).Points());
  drawing.ringReceived = menus_.At(Command::kContactPoint, 0).checked;
  drawing.ringNotReceived = menus_.At(Command::kContactPoint, 1).checked;
  return drawing;
}

// Shows the notice that the map is being drawn; gives the box of the enabled unit k, of all for 0.
WorldBox Client::BeginFit(std::size_t k) {
  ports_.trace.Line("Fit begin...");
  mapUpdating_.Show();
  WorldBox box;
  for (std::size_t unit = 1; unit <= feed_.Points().UnitCount(); ++unit) {
    if (k == 0 || unit == k) box = BoxOf(feed_.Points().Track(unit).Points(), box);
  }
  return box.IsEmpty() ? DefaultBox() : box;
}

}  // namespace pallomir
