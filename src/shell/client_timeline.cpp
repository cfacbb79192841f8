#include "shell/client.h"

// What the pickers, the timeline and the marks over the map ask of the rest of the program.

namespace pallomir {

PickerPanel::Host Client::PickerHost() {
  PickerPanel::Host host;
  host.reload = [this] { MapReload(); };
  host.editingEnded = [this] { focus_.Return(); };
  host.isLive = [this] { return live_.IsLive(); };
  return host;
}

TimelinePanel::Host Client::TimelineHost() {
  TimelinePanel::Host host;
  host.isMinimised = [this] { return frame_.IsMinimised(); };
  host.settled = [this] { mapUpdating_.HideWhenDone(); };
  host.pointHovered = [this](std::size_t k, std::size_t index) { marks_.ShowPointMarker(k, index); };
  return host;
}

MapMarks::Host Client::MarksHost() {
  MapMarks::Host host;
  host.browserSize = [this] { return ports_.views.frame.BrowserSize(); };
  host.boxDrawn = [this](const WorldBox& box) { map_.ZoomTo(box); };
  host.pointerLeft = [this] { zones_.PointerLeft(); };
  host.mapChanged = [this] { pointTables_.Tables().OnViewMoved(); };
  return host;
}

}  // namespace pallomir
