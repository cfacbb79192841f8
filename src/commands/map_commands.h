#pragma once

#include <string>

#include "commands/command_handlers.h"
#include "commands/menu_view.h"
#include "map/page_form.h"

namespace pallomir {

/// The commands that choose what the map page shows. The menus hold the choice.
class MapCommands {
 public:
  /// Takes over the commands. All arguments outlive it.
  MapCommands(MenuModel& menus, CommandHandlers& handlers, PageForm& form, MenuView& view);

  PageChoices Choices() const;

  /// Opens the menu where the page was clicked; some entries need a place on the map.
  void PopUpAtPointer(bool hasPlace);
  /// The menu's button leads out of the panorama first.
  void MenuButtonClicked();

 private:
  bool IsChecked(Command command) const { return menus_.At(command).checked; }
  bool Toggle(Command command);
  const std::string& MapType() const;
  void SetPanorama(bool on);

  MenuModel& menus_;
  PageForm& form_;
  MenuView& view_;
};

}  // namespace pallomir
