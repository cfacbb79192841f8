#include <string>
#include <utility>

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
  ports_.view.LayOutTimeline(book_.enabledCount);
}

void Client::MapReload() {
  if (closing_ || !loaded_) return;
  ports_.trace.Line("MapReload begin...");
  ports_.beeper.Beep();
  map_->DropRebuild();
  feed_.Forget();
  map_->Rebuild();  // of empty tracks, so that they may be replaced meanwhile
  EnumerateMUs();
  frame_.LayOut();
  feed_.Restart();
  ports_.trace.Line("...end MapReload");
}

void Client::OnLaidOut() {
  Run(seams.stopSound);
  HidePointMarker();
  if (frame_.IsMinimised()) return;
  ports_.views.frame.LayOut();
  map_->SendSize();
  map_->SendCentre();
  Timeline_Resize();
}

MainWindowRooms Client::RoomsOfWindow() {
  TimelineInput timeline;
  timeline.hovered = [this](int row, int column) { TimelineHovered(row, column); };
  timeline.left = [this] { TimelineLeft(); };
  timeline.dragged = [this](double from, double to) { TimelineDragged(from, to); };
  timeline.layoutClicked = [this] { Timeline_Resize(); };
  timeline.pickerGotFocus = [this](int i) { PickerGotFocus(i); };
  timeline.pickerLostFocus = [this](int i) { PickerLostFocus(i); };
  timeline.pickerChanged = [this](int i, Millis value) { PickerChanged(i, value); };
  timeline.pickerDroppedDown = [this](int i) { PickerDroppedDown(i); };
  timeline.pickerClosedUp = [this](int i) { PickerClosedUp(i); };
  timeline.reload = [this] { ReloadClicked(); };
  return {menus_,
          frame_,
          focus_,
          ports_.questions,
          std::move(timeline),
          {[this](int x) { PointerOverCaption(x); }, [this] { HidePointInfos(); },
           [this](ViewPoint a, ViewPoint b) { RubberBandDrawn(a, b); }},
          feed_,
          units_,
          hotspots_,
          [this](int modifiers, char key) { return KeyDown(modifiers, key); },
          [this] { MenuButtonClicked(); },
          [this] { Unload(); }};
}

}  // namespace pallomir
