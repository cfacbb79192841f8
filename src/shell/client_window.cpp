#include <list>
#include <string>
#include <utility>

#include "shell/client.h"
#include "shell/settings_keys.h"

// The window's focus, size and place; and the units that keys and menus choose.

namespace pallomir {

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
  ports_.view.LayOutTimeline(book_.enabledCount);
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

void Client::HideMapUpdating() {
  if (!mapUpdatingShown_) return;
  mapUpdatingShown_ = false;
  ports_.view.HideMapUpdating();
  ports_.trace.Line("hiding formMapUpdating");
}

}  // namespace pallomir
