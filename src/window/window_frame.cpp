#include "window/window_frame.h"

#include <variant>

namespace pallomir {

WindowFrame::WindowFrame(FrameView& view, MainWindow& window, WindowChoices& stored, EventLoop& loop,
                         Trace& trace)
    : view_(view),
      window_(window),
      stored_(stored),
      trace_(trace),
      placementDelay_(loop.CreateTimer("PlacementDelay", 250, [this] { StorePlacement(); })) {}

WindowFrame::~WindowFrame() = default;

void WindowFrame::Restore() {
  const PixelRect area = window_.WorkArea();
  stored_.left.ReadOr(area.left);
  stored_.top.ReadOr(area.top);
  stored_.width.ReadOr(area.width);
  stored_.height.ReadOr(area.height);
  const PixelRect bounds{stored_.left.Value(), stored_.top.Value(), stored_.width.Value(),
                         stored_.height.Value()};
  if (!window_.KnowsPosition()) trace_.Line("positions are neither set nor stored on this desktop");
  window_.SetBounds(MovedIntoReach(bounds, window_.Screens()));
  stored_.maximised.Read();
  if (stored_.maximised.Value()) Apply(modes_.Maximise(Surroundings()));
}

void WindowFrame::Open() { open_ = true; }

void WindowFrame::Store() {
  stored_.maximised.Store(modes_.Mode() == WindowMode::kMaximised || modes_.IsFullScreen());
  StorePlacement();
}

void WindowFrame::Close() {
  open_ = false;
  placementDelay_->SetEnabled(false);
}

void WindowFrame::Resized() {
  if (open_ && !modes_.IsChanging()) LayOut();
}

void WindowFrame::Moved() {
  if (open_) NotePlacement();
}

void WindowFrame::StateGiven(WindowMode state) {
  if (!open_) return;
  // The size that belongs to the state may have come before it.
  const bool isLarge = state == WindowMode::kMaximised || state == WindowMode::kFullScreen;
  if (isLarge && IsAboutAsLargeAs(window_.Bounds(), window_.WorkArea())) placement_.Disown(window_.Bounds());
  Apply(modes_.StateGiven(state));
}

void WindowFrame::MinimiseEnded() {
  if (open_) Apply(modes_.MinimiseEnded());
}

void WindowFrame::LayOut() {
  NotePlacement();
  laidOut();
}

void WindowFrame::Change(WindowEffects (WindowModes::*change)(const WindowSurroundings&)) {
  StorePlacement();  // a move of just now is the place to come back to
  Apply((modes_.*change)(Surroundings()));
}

void WindowFrame::Apply(const WindowEffects& effects) {
  bool resize = false;
  for (const WindowEffect& effect : effects) {
    if (const auto* topmost = std::get_if<window_effect::SetTopmost>(&effect)) {
      window_.SetTopmost(topmost->topmost);
    } else if (const auto* state = std::get_if<window_effect::SetState>(&effect)) {
      window_.SetState(state->state);
    } else if (const auto* bounds = std::get_if<window_effect::SetBounds>(&effect)) {
      window_.SetBounds(bounds->bounds);
    } else {
      resize = true;
    }
  }
  modes_.ChangeApplied();
  view_.ShowWindowMode(modes_.Mode());
  if (resize && open_) LayOut();
}

WindowSurroundings WindowFrame::Surroundings() const {
  return {window_.Bounds(), window_.WorkArea(), window_.Screen(), window_.HasWindowManager()};
}

void WindowFrame::NotePlacement() {
  if (!modes_.IsPlacementNormal()) return;
  placement_.Note(window_.Bounds());
  placementDelay_->SetEnabled(true);  // a drag sends many places; the last one of a quarter second is stored
}

void WindowFrame::StorePlacement() {
  placementDelay_->SetEnabled(false);
  if (IsPlacedByDesktop(window_)) placement_.Disown(window_.Bounds());
  if (const auto bounds = placement_.Take()) SavePlacement(stored_, *bounds, window_.KnowsPosition());
}

}  // namespace pallomir
