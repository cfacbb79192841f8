#include "shell/client.h"

// What the pickers and the timeline ask of the rest of the program.

namespace pallomir {

PickerPanel::Host Client::PickerHost() {
  PickerPanel::Host host;
  host.reload = [this] { MapReload(); };
  host.editingEnded = [this] { focus_.Return(); };
  return host;
}

TimelinePanel::Host Client::TimelineHost() {
  TimelinePanel::Host host;
  host.isMinimised = [this] { return frame_.IsMinimised(); };
  host.settled = [this] { mapUpdating_.HideWhenDone(); };
  host.pointHovered = [this](std::size_t k, std::size_t index) { ShowPointMarker(k, index + 1); };
  return host;
}

}  // namespace pallomir
