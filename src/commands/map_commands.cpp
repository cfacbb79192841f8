#include "commands/map_commands.h"

#include <utility>

namespace pallomir {

MapCommands::MapCommands(MenuModel& menus, CommandHandlers& handlers, MapBridge& map, MenuView& view)
    : menus_(menus), map_(map), form_(map.Form()), view_(view) {
  const auto handleLayer = [&](Command command, PageLayer layer) {
    handlers.Set(command, [this, command, layer](int) { form_.ShowLayer(layer, Toggle(command)); });
  };
  handleLayer(Command::kMapData, PageLayer::kMapData);
  handleLayer(Command::kTrackingData, PageLayer::kTrackingData);
  handleLayer(Command::kZones, PageLayer::kZones);
  handlers.Set(Command::kMapType, [this](int type) {
    menus_.CheckOnly(Command::kMapType, type);
    form_.ShowMapType(MapType());
  });
  handlers.Set(Command::kStreetView, [this](int) { form_.ShowStreetView(Toggle(Command::kStreetView)); });
  handlers.Set(Command::kPanorama, [this](int) { SetPanorama(!IsChecked(Command::kPanorama)); });
  handlers.Set(Command::kContactPoint, [this](int index) {
    Toggle(Command::kContactPoint, index);
    map_.Rebuild();
  });
}

PageChoices MapCommands::Choices() const {
  PageChoices choices;
  choices.mapData = IsChecked(Command::kMapData);
  choices.trackingData = IsChecked(Command::kTrackingData);
  choices.zones = IsChecked(Command::kZones);
  choices.mapType = MapType();
  choices.panorama = IsChecked(Command::kPanorama);
  choices.streetView = IsChecked(Command::kStreetView);
  return choices;
}

TrackDrawing MapCommands::Drawing(std::vector<std::span<const DataPoint>> tracks) const {
  TrackDrawing drawing;
  drawing.units = std::move(tracks);
  drawing.ringReceived = IsChecked(Command::kContactPoint, 0);
  drawing.ringNotReceived = IsChecked(Command::kContactPoint, 1);
  return drawing;
}

void MapCommands::PopUpAtPointer(bool hasPlace) {
  menus_.At(Command::kBeenHere).enabled = hasPlace;
  menus_.At(Command::kNearby).enabled = hasPlace;
  view_.PopUpMenu(MenuView::MenuPlace::kAtPointer);
}

void MapCommands::MenuButtonClicked() {
  if (IsChecked(Command::kPanorama)) {
    SetPanorama(false);
  } else {
    view_.PopUpMenu(MenuView::MenuPlace::kUnderButton);
  }
}

bool MapCommands::Toggle(Command command, int index) {
  MenuItem& entry = menus_.At(command, index);
  return entry.checked = !entry.checked;
}

const std::string& MapCommands::MapType() const {
  return menus_.At(Command::kMapType, menus_.CheckedIndex(Command::kMapType)).tag;
}

void MapCommands::SetPanorama(bool on) {
  menus_.At(Command::kPanorama).checked = on;
  form_.ShowPanorama(on);
  view_.SetMenuLabel(on ? "Exit to Map" : "Menu");
}

}  // namespace pallomir
