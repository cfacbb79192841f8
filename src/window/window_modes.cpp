#include "window/window_modes.h"

#include <algorithm>
#include <utility>

namespace pallomir {

using window_effect::Resize;
using window_effect::SetBounds;
using window_effect::SetState;
using window_effect::SetTopmost;

PixelRect MovedIntoReach(PixelRect bounds, const std::vector<PixelRect>& screens) {
  // As much of the caption line as a pointer needs to take hold of it.
  constexpr int kGripWidth = 80;
  constexpr int kGripHeight = 16;
  for (const PixelRect& screen : screens) {
    const int width =
        std::min(bounds.left + bounds.width, screen.left + screen.width) - std::max(bounds.left, screen.left);
    const int height =
        std::min(bounds.top + kGripHeight, screen.top + screen.height) - std::max(bounds.top, screen.top);
    if (width >= kGripWidth && height >= kGripHeight) return bounds;
  }
  if (screens.empty()) return bounds;
  const PixelRect& first = screens.front();
  bounds.left = std::clamp(bounds.left, first.left, first.left + std::max(0, first.width - bounds.width));
  bounds.top = std::clamp(bounds.top, first.top, first.top + std::max(0, first.height - bounds.height));
  return bounds;
}

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
  if (state == WindowMode::kMinimised) {
    beforeMinimised_ = mode_;
    mode_ = state;
    return {};
  }
  if (mode_ == WindowMode::kNormal) normalBounds_.reset();
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
