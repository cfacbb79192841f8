#include <string>
#include <utility>
#include <variant>

#include "commands/unit_menu.h"
#include "shell/client.h"

// The window's focus, size and place; and the units that keys and menus choose.

namespace pallomir {

void Client::FocusLost() {
  if (!closing_ && !focusHoldOff_) ports_.view.ReturnFocus();
}

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
  mapUpdatingShown_ = true;
  ports_.view.ShowMapUpdating();
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
  LayOut();
  feed_.Restart();
  ports_.trace.Line("...end MapReload");
}

void Client::Resized() {
  if (closing_ || !loaded_ || modes_.IsChanging()) return;
  LayOut();
}

void Client::MinimiseClicked() { ChangeMode(&WindowModes::Minimise); }
void Client::NormalClicked() { ChangeMode(&WindowModes::Normal); }
void Client::MaximiseClicked() { ChangeMode(&WindowModes::Maximise); }
void Client::FullScreenClicked() { ChangeMode(&WindowModes::FullScreen); }
void Client::CaptionDoubleClicked() { ChangeMode(&WindowModes::ToggleMaximised); }

void Client::ChangeMode(WindowEffects (WindowModes::*change)(const WindowSurroundings&)) {
  StorePlacement();  // a move of just now is the place to come back to
  Apply((modes_.*change)(Surroundings()));
}

void Client::WindowStateGiven(WindowMode state) {
  if (closing_ || !loaded_) return;
  // The size that belongs to the state may have come before it.
  const bool isLarge = state == WindowMode::kMaximised || state == WindowMode::kFullScreen;
  if (isLarge && IsAboutAsLargeAs(ports_.window.Bounds(), ports_.window.WorkArea()))
    placement_.Disown(ports_.window.Bounds());
  Apply(modes_.StateGiven(state));
}

void Client::MinimiseEnded() {
  if (!closing_ && loaded_) Apply(modes_.MinimiseEnded());
}

WindowSurroundings Client::Surroundings() const {
  return {ports_.window.Bounds(), ports_.window.WorkArea(), ports_.window.Screen(),
          ports_.window.HasWindowManager()};
}

void Client::Apply(const WindowEffects& effects) {
  bool resize = false;
  for (const WindowEffect& effect : effects) {
    if (const auto* topmost = std::get_if<window_effect::SetTopmost>(&effect)) {
      ports_.window.SetTopmost(topmost->topmost);
    } else if (const auto* state = std::get_if<window_effect::SetState>(&effect)) {
      ports_.window.SetState(state->state);
    } else if (const auto* bounds = std::get_if<window_effect::SetBounds>(&effect)) {
      ports_.window.SetBounds(bounds->bounds);
    } else {
      resize = true;
    }
  }
  modes_.ChangeApplied();
  ports_.view.ShowWindowMode(modes_.Mode());
  if (resize && loaded_) LayOut();
}

void Client::HoldFocusOff(bool hold) { focusHoldOff_ = hold; }

void Client::Moved() {
  if (!closing_ && loaded_) NotePlacement();
}

void Client::LayOut() {
  Run(seams.stopSound);
  HidePointMarker();
  NotePlacement();
  if (modes_.Mode() == WindowMode::kMinimised) return;
  ports_.view.LayOut();
  map_->SendSize();
  map_->SendCentre();
  Timeline_Resize();
}

void Client::NotePlacement() {
  if (!modes_.IsPlacementNormal()) return;
  placement_.Note(ports_.window.Bounds());
  placementDelay_->SetEnabled(true);  // a drag sends many places; the last one of a quarter second is stored
}

void Client::StorePlacement() {
  placementDelay_->SetEnabled(false);
  if (IsPlacedByDesktop(ports_.window)) placement_.Disown(ports_.window.Bounds());
  if (const auto bounds = placement_.Take())
    SavePlacement(choices_.window, *bounds, ports_.window.KnowsPosition());
}

// Unless there is still something to wait for.
void Client::HideMapUpdating() {
  if (!mapUpdatingShown_ || map_->IsRebuilding() || tmrRedraw_->IsEnabled()) return;
  mapUpdatingShown_ = false;
  ports_.view.HideMapUpdating();
  ports_.trace.Line("hiding formMapUpdating");
}

}  // namespace pallomir
