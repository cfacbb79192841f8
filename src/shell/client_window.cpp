#include "commands/unit_menu.h"
#include "shell/client.h"

// What lies in the window, and the units that keys and menus choose.

namespace pallomir {

void Client::EnumerateMUs() {
  mapUpdating_.Show();
  if (closing_) return;
  units_.Enumerate();
  feed_.Forget();
  ShowUnitsToFit(menus_, units_.List());
  timeline_.LayOutRows();
}

void Client::MapReload() {
  if (closing_ || !loaded_) return;
  ports_.trace.Line("MapReload begin...");
  ports_.desktop.beeper.Beep();
  for (Joint* joint : joints_) joint->OnReload();
  map_.DropRebuild();
  feed_.Forget();
  map_.Rebuild();  // of empty tracks, so that they may be replaced meanwhile
  EnumerateMUs();
  frame_.LayOut();
  feed_.Restart();
  ports_.trace.Line("...end MapReload");
}

void Client::OnLaidOut() {
  for (Joint* joint : joints_) joint->OnLaidOut();
  marks_.HidePointMarker();
  if (frame_.IsMinimised()) return;
  ports_.views.frame.LayOut();
  map_.SendSize();
  map_.SendCentre();
  timeline_.Timeline_Resize();
}

MainWindowRooms Client::RoomsOfWindow() {
  return {menus_,
          frame_,
          focus_,
          ports_.desktop.questions,
          pickers_,
          timeline_,
          marks_,
          feed_,
          units_,
          options_.Hotspots(),
          [this](int modifiers, char key) { return KeyDown(modifiers, key); },
          [this] { MenuButtonClicked(); },
          [this] { Unload(); }};
}

}  // namespace pallomir
