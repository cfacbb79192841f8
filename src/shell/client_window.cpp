#include <string>
#include <utility>

#include "commands/unit_menu.h"
#include "shell/client.h"

// What lies in the window, and the units that keys and menus choose.

namespace pallomir {

void Client::ShowOnlyUnit(int i) {
  menus_.CheckOnly(Command::kOnlyUnit, i);
  SaveUnits();
  MapReload();
}

void Client::ToggleUnit(int i) {
  MenuItem& entry = menus_.At(Command::kOnlyUnit, i);
  entry.checked = !entry.checked;
  SaveUnits();
  MapReload();
}

void Client::ShowAllUnits() {
  for (MenuItem& item : menus_.ArrayParent(Command::kOnlyUnit)->children) item.checked = item.index > 0;
  SaveUnits();
  MapReload();
}

void Client::SaveUnits() {
  const std::vector<MobileUnit> units = UnitsFromMenu(menus_);
  ports_.view.ShowUnitFlags(units);
  if (areUnitsDemo_) return;  // the menu alone keeps those
  choices_.units.Store(EncodeMobileUnits(units));
}

void Client::UnitsApplied(const std::vector<MobileUnit>& units) {
  if (closing_) return;
  ShowUnitsInMenu(menus_, units);
  SaveUnits();
  Question question;
  question.kind = Question::Kind::kYesNo;
  question.icon = Question::Icon::kQuestion;
  question.title = "Pallomir";
  question.text = "Do you want to reload the map now?";
  ports_.questions.Ask(question, [this](const Answer& answer) {
    if (answer.yes) MapReload();
  });
}

void Client::EnumerateMUs() {
  mapUpdating_.Show();
  if (closing_) return;
  book_ = EnumerateUnits(UnitsFromMenu(menus_));
  feed_.Forget();
  ShowUnitsToFit(menus_);
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
          [this](const auto& units) { UnitsApplied(units); },
          [this](const auto& ssids) { HotspotsApplied(ssids); },
          [this](const auto& hotspots) { SecureHotspotsApplied(hotspots); },
          [this](int modifiers, char key) { return KeyDown(modifiers, key); },
          [this] { MenuButtonClicked(); },
          [this] { Unload(); }};
}

}  // namespace pallomir
