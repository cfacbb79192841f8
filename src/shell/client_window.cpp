#include <list>
#include <string>
#include <utility>

#include "shell/client.h"
#include "shell/hot_keys.h"
#include "shell/settings_keys.h"

// What the user does with the window: keys, menus, pickers, size; and the units that keys and menus choose.

namespace pallomir {

bool Client::KeyDown(int modifiers, char key) {
  if (closing_ || pickers_.PickerFocusMask() != 0) return false;
  const auto command = FindKeyCommand(modifiers, key, menus_.Count(kUnitMenu) - 1);
  if (!command) return false;
  switch (command->action) {
    case KeyAction::kShowAllUnits:
      ShowAllUnits();
      break;
    case KeyAction::kShowOnlyUnit:
      ShowOnlyUnit(command->number);
      break;
    case KeyAction::kToggleUnit:
      ToggleUnit(command->number);
      break;
    case KeyAction::kFitAll:
      FitByUser(0);
      break;
    case KeyAction::kReload:
      MapReload();
      break;
  }
  ports_.beeper.Beep();
  return true;
}

void Client::FocusLost() {
  if (!closing_ && !focusHoldOff_) ports_.view.ReturnFocus();
}

void Client::ShowOnlyUnit(int i) {
  menus_.CheckOnly(kUnitMenu, i);
  SaveUnits();
  MapReload();
}

void Client::ToggleUnit(int i) {
  MenuItem& entry = menus_.At(kUnitMenu, i);
  entry.checked = !entry.checked;
  SaveUnits();
  MapReload();
}

void Client::ShowAllUnits() {
  for (MenuItem& item : menus_.ArrayParent(kUnitMenu)->children)
    item.checked = item.name == kUnitMenu && item.index > 0;
  SaveUnits();
  MapReload();
}

void Client::SaveUnits() {
  const std::string stored = EncodeMobileUnits(UnitsFromMenu(menus_));
  if (choices_.demoMode) {
    demoUnits_ = stored;
  } else {
    ports_.settings.Save(setting::kMobileUnits.key, stored);
  }
}

void Client::EnumerateMUs() {
  mapUpdatingShown_ = true;
  ports_.view.ShowMapUpdating();
  if (closing_) return;
  book_ = EnumerateUnits(UnitsFromMenu(menus_));
  store_.Reset(book_.enabledCount);
  menus_.TruncateArray("mnuViewFitToMU_Array", 1);
  menus_.At("mnuViewFitToMU_Array").visible = book_.enabledCount == 0;
  menus_.At("mnuViewFitToMU_Array").enabled = false;
  std::list<MenuItem> fits;
  for (const MenuItem& unit : menus_.ArrayParent(kUnitMenu)->children) {
    if (unit.name != kUnitMenu || unit.index == 0 || !unit.checked) continue;
    MenuItem& item = fits.emplace_back();
    item.name = "mnuViewFitToMU_Array";
    item.index = static_cast<int>(fits.size());
    item.caption = unit.caption;
  }
  menus_.AppendToArray("mnuViewFitToMU_Array", std::move(fits));
}

void Client::MapReload() {
  if (closing_ || !loaded_) return;
  ports_.trace.Line("MapReload begin...");
  ports_.beeper.Beep();
  stream_.ClearHold();
  store_.Reset(book_.enabledCount);
  RebuildTiles();
  EnumerateMUs();
  LayOut();
  RestartConnection();
  ports_.trace.Line("...end MapReload");
}

void Client::Resized() {
  if (closing_ || !loaded_) return;
  LayOut();
}

void Client::Moved() {
  if (!closing_ && loaded_) NotePlacement();
}

void Client::LayOut() {
  Run(seams.stopSound);
  HidePointMarker();
  NotePlacement();
  if (ports_.window.IsMinimised()) return;
  ports_.view.LayOut();
  SendPageSize();
  SendCentre();
  Timeline_Resize();
}

void Client::NotePlacement() {
  // A size that came just before the window turned out to be maximised is not the normal one.
  placementToStore_.reset();
  if (ports_.window.IsMaximised() || ports_.window.IsMinimised()) return;
  placementToStore_ = ports_.window.Bounds();
  placementDelay_->SetEnabled(true);  // a drag sends many places; the last one of a quarter second is stored
}

void Client::StorePlacement() {
  placementDelay_->SetEnabled(false);
  if (!placementToStore_) return;
  const PixelRect bounds = *placementToStore_;
  placementToStore_.reset();
  const auto save = [this](const SettingKey& key, int value) {
    const std::string text = std::to_string(value);
    if (ports_.settings.Get(key.key, "") != text) ports_.settings.Save(key.key, text);
  };
  save(setting::kWindowLeft, bounds.left);
  save(setting::kWindowTop, bounds.top);
  save(setting::kWindowWidth, bounds.width);
  save(setting::kWindowHeight, bounds.height);
}

void Client::Timeline_Resize() {
  if (ports_.window.IsMinimised() || !ports_.view.IsTimelineVisible() || book_.enabledCount == 0) {
    HideMapUpdating();  // no redraw will come to do it
    return;
  }
  ports_.trace.Line("Timeline_Resize begin...");
  tmrRedraw_->SetEnabled(true);
  ports_.trace.Line("...end Timeline_Resize");
}

void Client::OnRedrawTick() {
  ports_.trace.Line("tmrRedraw_Timer begin");
  Timeline_Resize();
  tmrRedraw_->SetEnabled(false);
  Run(seams.redrawStrips);
  HideMapUpdating();
  ports_.trace.Line("...end tmrRedraw_Timer");
}

void Client::HideMapUpdating() {
  if (!mapUpdatingShown_) return;
  mapUpdatingShown_ = false;
  ports_.view.HideMapUpdating();
  ports_.trace.Line("hiding formMapUpdating");
}

void Client::PickerGotFocus(int i) {
  pickers_.GotFocus(i);
  tmrDTP_->SetEnabled(false);
  ShowPickers();
}

void Client::PickerLostFocus(int i) {
  if (closing_) return;
  pickers_.LostFocus(i);
  tmrDTP_->SetEnabled(true);
  ShowPickers();
  FocusLost();
}

void Client::PickerChanged(int i, Millis value) {
  pickers_.Changed(i, value);
  ShowPickers();
}

void Client::PickerDroppedDown(int i) {
  pickers_.DroppedDown(i);
}

void Client::PickerClosedUp(int i) {
  const bool changed = pickers_.ClosedUp(i);
  ShowPickers();
  if (changed) ports_.view.MovePointerToReloadButton();
}

void Client::ReloadClicked() {
  TakeWindowFromPickers();
  MapReload();
  pickers_.Reloaded();
  ShowPickers();
}

void Client::OnPickerGraceTick() {
  tmrDTP_->SetEnabled(false);
  pickers_.GraceEnded();
  ShowPickers();
}

void Client::TakeWindowFromPickers() {
  window_ = pickers_.Window();
}

void Client::ShowPickers() {
  ports_.view.ShowPicker(0, pickers_.Value(0), pickers_.Format(0), true);
  ports_.view.ShowPicker(1, pickers_.Value(1), pickers_.Format(1), pickers_.IsEndVisible());
  ports_.view.ShowReloadButton(pickers_.IsReloadVisible());
}

}  // namespace pallomir
