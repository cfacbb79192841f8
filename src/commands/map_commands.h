#pragma once

#include <span>
#include <string>
#include <vector>

#include "commands/command_handlers.h"
#include "commands/menu_view.h"
#include "map/map_bridge.h"

namespace pallomir {

/// The commands that choose what the map page shows. The menus hold the choice.
class MapCommands {
 public:
  /// Takes over the commands. All arguments outlive it.
  MapCommands(MenuModel& menus, CommandHandlers& handlers, MapBridge& map, MenuView& view);

  PageChoices Choices() const;
  /// The tracks, with rings around the points that the user chose to mark.
  TrackDrawing Drawing(std::vector<std::span<const DataPoint>> tracks) const;

  /// Opens the menu where the page was clicked; some entries need a place on the map.
  void PopUpAtPointer(bool hasPlace);
  /// The menu's button leads out of the panorama first.
  void MenuButtonClicked();

 private:
  bool IsChecked(Command command, int index = 0) const { return menus_.At(command, index).checked; }
  bool Toggle(Command command, int index = 0);
  const std::string& MapType() const;
  void SetPanorama(bool on);

  MenuModel& menus_;
  MapBridge& map_;
  PageForm& form_;
  MenuView& view_;
};

}  // namespace pallomir
