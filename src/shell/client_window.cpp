#include <string>
#include <utility>
#include <variant>

#include "commands/unit_menu.h"
#include "shell/client.h"
#include "shell/settings_keys.h"

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
  const std::string stored = EncodeMobileUnits(UnitsFromMenu(menus_));
  if (areUnitsDemo_) {
    demoUnits_ = stored;
  } else {
    ports_.settings.Save(setting::kMobileUnits.key, stored);
  }
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
  store_.Reset(book_.enabledCount);
  ShowUnitsToFit(menus_);
  ports_.view.LayOutTimeline(book_.enabledCount);
}

void Client::MapReload() {
  if (closing_ || !loaded_) return;
  ports_.trace.Line("MapReload begin...");
  ports_.beeper.Beep();
  stream_.ClearHold();
  map_->DropRebuild();
  store_.Reset(book_.enabledCount);
  map_->Rebuild();  // of empty tracks, so that they may be replaced meanwhile
  EnumerateMUs();
  LayOut();
  RestartConnection();
  ports_.trace.Line("...end MapReload");
}

void Client::Resized() {
  if (closing_ || !loaded_ || modes_.IsChanging()) return;
  LayOut();
}

void Client::MinimiseClicked() { Apply(modes_.Minimise(Surroundings())); }
void Client::NormalClicked() { Apply(modes_.Normal(Surroundings())); }
void Client::MaximiseClicked() { Apply(modes_.Maximise(Surroundings())); }
void Client::FullScreenClicked() { Apply(modes_.FullScreen(Surroundings())); }
void Client::CaptionDoubleClicked() { Apply(modes_.ToggleMaximised(Surroundings())); }

void Client::WindowStateGiven(WindowMode state) {
  if (!closing_ && loaded_) Apply(modes_.StateGiven(state));
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
  // A size that came just before the window turned out to be maximised is not the normal one.
  placementToStore_.reset();
  if (!modes_.IsPlacementNormal()) return;
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
  if (ports_.window.KnowsPosition()) {
    save(setting::kWindowLeft, bounds.left);
    save(setting::kWindowTop, bounds.top);
  }
  save(setting::kWindowWidth, bounds.width);
  save(setting::kWindowHeight, bounds.height);
}

// Unless there is still something to wait for.
void Client::HideMapUpdating() {
  if (!mapUpdatingShown_ || map_->IsRebuilding() || tmrRedraw_->IsEnabled()) return;
  mapUpdatingShown_ = false;
  ports_.view.HideMapUpdating();
  ports_.trace.Line("hiding formMapUpdating");
}

}  // namespace pallomir
