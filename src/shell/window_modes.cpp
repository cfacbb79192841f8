#include "shell/window_modes.h"

#include <utility>

namespace pallomir {

using window_effect::Resize;
using window_effect::SetBounds;
using window_effect::SetState;
using window_effect::SetTopmost;

WindowEffects WindowModes::FullScreen(const WindowSurroundings& at) {
  if (mode_ == WindowMode::kMinimised || mode_ == WindowMode::kFullScreen) return {};
  KeepNormalBounds(at);
  WindowEffects effects;
  if (at.hasWindowManager) {
    effects.emplace_back(SetState{WindowMode::kFullScreen});
  } else {
    effects.emplace_back(SetBounds{at.screen});
  }
  effects.emplace_back(SetTopmost{true});
  return Enter(WindowMode::kFullScreen, std::move(effects));
}

WindowEffects WindowModes::Maximise(const WindowSurroundings& at) {
  KeepNormalBounds(at);
  WindowEffects effects;
  DropTopmost(effects);
  if (at.hasWindowManager) {
    effects.emplace_back(SetState{WindowMode::kMaximised});
  } else {
    if (mode_ == WindowMode::kMinimised) effects.emplace_back(SetState{WindowMode::kNormal});
    effects.emplace_back(SetBounds{at.workArea});
  }
  return Enter(WindowMode::kMaximised, std::move(effects));
}

WindowEffects WindowModes::Normal(const WindowSurroundings& at) {
  if (mode_ == WindowMode::kNormal) return {};
  WindowEffects effects;
  if (at.hasWindowManager || mode_ == WindowMode::kMinimised)
    effects.emplace_back(SetState{WindowMode::kNormal});
  DropTopmost(effects);
  if (normalBounds_) effects.emplace_back(SetBounds{*normalBounds_});
  return Enter(WindowMode::kNormal, std::move(effects));
}

WindowEffects WindowModes::Minimise(const WindowSurroundings& at) {
  if (mode_ == WindowMode::kMinimised) return {};
  KeepNormalBounds(at);
  WindowEffects effects;
  if (mode_ == WindowMode::kFullScreen) {
    // The window comes back as a normal one.
    if (at.hasWindowManager) effects.emplace_back(SetState{WindowMode::kNormal});
    DropTopmost(effects);
    if (normalBounds_) effects.emplace_back(SetBounds{*normalBounds_});
  }
  beforeMinimised_ = mode_ == WindowMode::kFullScreen ? WindowMode::kNormal : mode_;
  effects.emplace_back(SetState{WindowMode::kMinimised});
  mode_ = WindowMode::kMinimised;
  changing_ = true;
  return effects;
}

WindowEffects WindowModes::ToggleMaximised(const WindowSurroundings& at) {
  return mode_ == WindowMode::kNormal ? Maximise(at) : Normal(at);
}

WindowEffects WindowModes::StateGiven(WindowMode state) {
  // While a change of ours is under way, the states are those that it asks for.
  if (state == mode_ || changing_) return {};
  if (mode_ == WindowMode::kNormal) normalBounds_.reset();
  if (state == WindowMode::kMinimised) {
    beforeMinimised_ = mode_;
    mode_ = state;
    return {};
  }
  WindowEffects effects;
  DropTopmost(effects);
  return Enter(state, std::move(effects));
}

WindowEffects WindowModes::MinimiseEnded() {
  if (mode_ != WindowMode::kMinimised) return {};
  return Enter(beforeMinimised_, {});
}

WindowEffects WindowModes::Enter(WindowMode mode, WindowEffects effects) {
  mode_ = mode;
  changing_ = true;
  effects.emplace_back(Resize{});
  return effects;
}

void WindowModes::KeepNormalBounds(const WindowSurroundings& at) {
  if (mode_ == WindowMode::kNormal) normalBounds_ = at.bounds;
}

void WindowModes::DropTopmost(WindowEffects& effects) const {
  if (mode_ == WindowMode::kFullScreen) effects.emplace_back(SetTopmost{false});
}

}  // namespace pallomir
