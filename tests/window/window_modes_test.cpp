#include "window/window_modes.h"

#include <gmock/gmock.h>

#include <string>

namespace pallomir {
namespace {

constexpr PixelRect kBounds{120, 80, 901, 603};
constexpr PixelRect kWorkArea{0, 24, 1920, 1056};
constexpr PixelRect kScreen{0, 0, 1920, 1080};

std::string Name(const PixelRect& rect) {
  if (rect == kBounds) return "bounds";
  if (rect == kWorkArea) return "work area";
  if (rect == kScreen) return "screen";
  return "elsewhere";
}

std::string Name(WindowMode mode) { return "state " + std::to_string(static_cast<int>(mode)); }

std::string Describe(const WindowEffects& effects) {
  struct {
    std::string operator()(const window_effect::SetTopmost& e) {
      return e.topmost ? "topmost" : "not topmost";
    }
    std::string operator()(const window_effect::SetState& e) { return Name(e.state); }
    std::string operator()(const window_effect::SetBounds& e) { return Name(e.bounds); }
    std::string operator()(const window_effect::Resize&) { return "resize"; }
  } text;
  std::string all;
  for (const WindowEffect& effect : effects) all += (all.empty() ? "" : ", ") + std::visit(text, effect);
  return all;
}

/// A window that does what the effects say, and where the modes say that it is.
struct Window {
  explicit Window(bool managed) { at.hasWindowManager = managed; }

  std::string Press(char button) {
    WindowEffects effects;
    if (button == 'f') effects = modes.FullScreen(at);
    if (button == 'x') effects = modes.Maximise(at);
    if (button == 'n') effects = modes.Normal(at);
    if (button == 'm') effects = modes.Minimise(at);
    if (button == 'd') effects = modes.ToggleMaximised(at);
    if (button == 'b') effects = modes.MinimiseEnded();
    Apply(effects);
    return Describe(effects);
  }

  void Press(const std::string& buttons) {
    for (const char button : buttons) Press(button);
  }

  void Apply(const WindowEffects& effects) {
    EXPECT_EQ(modes.IsChanging(), !effects.empty());
    for (const WindowEffect& effect : effects) {
      if (const auto* top = std::get_if<window_effect::SetTopmost>(&effect)) topmost = top->topmost;
      if (const auto* place = std::get_if<window_effect::SetBounds>(&effect)) at.bounds = place->bounds;
      if (const auto* state = std::get_if<window_effect::SetState>(&effect)) {
        // A window manager chooses the size itself.
        if (state->state == WindowMode::kMaximised) at.bounds = kWorkArea;
        if (state->state == WindowMode::kFullScreen) at.bounds = kScreen;
      }
    }
    modes.ChangeApplied();
  }

  WindowModes modes;
  WindowSurroundings at{kBounds, kWorkArea, kScreen, true};
  bool topmost = false;
};

// From each mode, reached by the buttons before the "|", each button.
struct Transition {
  const char* before;
  char button;
  int mode;  // afterwards
  const char* managed;
  const char* alone;
};

const Transition kTransitions[] = {
    {"", 'f', 99, "state 99, topmost, resize", "screen, topmost, resize"},
    {"", 'x', 2, "state 2, resize", "work area, resize"},
    {"", 'd', 2, "state 2, resize", "work area, resize"},
    {"", 'n', 0, "", ""},
    {"", 'm', 1, "state 1", "state 1"},
    {"", 'b', 0, "", ""},
    {"x", 'f', 99, "state 99, topmost, resize", "screen, topmost, resize"},
    {"x", 'x', 2, "state 2, resize", "work area, resize"},
    {"x", 'n', 0, "state 0, bounds, resize", "bounds, resize"},
    {"x", 'd', 0, "state 0, bounds, resize", "bounds, resize"},
    {"x", 'm', 1, "state 1", "state 1"},
    {"f", 'f', 99, "", ""},
    {"f", 'x', 2, "not topmost, state 2, resize", "not topmost, work area, resize"},
    {"f", 'n', 0, "state 0, not topmost, bounds, resize", "not topmost, bounds, resize"},
    {"f", 'd', 0, "state 0, not topmost, bounds, resize", "not topmost, bounds, resize"},
    {"f", 'm', 1, "state 0, not topmost, bounds, state 1", "not topmost, bounds, state 1"},
    {"m", 'f', 1, "", ""},
    {"m", 'm', 1, "", ""},
    {"m", 'x', 2, "state 2, resize", "state 0, work area, resize"},
    {"m", 'n', 0, "state 0, bounds, resize", "state 0, bounds, resize"},
    {"m", 'b', 0, "resize", "resize"},
    {"xm", 'b', 2, "resize", "resize"},
    {"xm", 'n', 0, "state 0, bounds, resize", "state 0, bounds, resize"},
    {"fm", 'b', 0, "resize", "resize"},
    {"fm", 'n', 0, "state 0, bounds, resize", "state 0, bounds, resize"},
};

TEST(WindowModes, EachButtonFromEachMode) {
  for (const bool managed : {true, false}) {
    for (const Transition& row : kTransitions) {
      SCOPED_TRACE(std::string(row.before) + " | " + row.button + (managed ? " managed" : " alone"));
      Window window(managed);
      window.Press(row.before);
      EXPECT_EQ(window.Press(row.button), managed ? row.managed : row.alone);
      EXPECT_EQ(static_cast<int>(window.modes.Mode()), row.mode);
      EXPECT_EQ(window.topmost, row.mode == 99);
      EXPECT_EQ(window.modes.IsPlacementNormal(), row.mode == 0);
    }
  }
}

TEST(WindowModes, NormalReturnsToTheExactBoundsAfterAnyWay) {
  const std::string buttons = "fxmbd";
  for (const bool managed : {true, false}) {
    for (int way = 0; way < 5 * 5 * 5 * 5; ++way) {
      Window window(managed);
      std::string path;
      for (int rest = way, i = 0; i < 4; rest /= 5, ++i) path += buttons[static_cast<std::size_t>(rest % 5)];
      window.Press(path + "n");
      EXPECT_EQ(window.at.bounds, kBounds) << path;
      EXPECT_EQ(window.modes.Mode(), WindowMode::kNormal) << path;
      EXPECT_FALSE(window.topmost) << path;
    }
  }
}

TEST(WindowModes, WhatTheSystemDoesIsTakenAsAModeAndNeverAnsweredWithASize) {
  Window window(true);
  const auto given = [&](WindowMode mode) {
    const WindowEffects effects = window.modes.StateGiven(mode);
    window.modes.ChangeApplied();
    return Describe(effects);
  };
  EXPECT_EQ(given(WindowMode::kNormal), "") << "nothing new";
  EXPECT_EQ(given(WindowMode::kMaximised), "resize");
  EXPECT_EQ(window.Press('n'), "state 0, resize") << "the system knows the size from before, we don't";
  window.Press('f');
  EXPECT_EQ(given(WindowMode::kMinimised), "");
  EXPECT_EQ(given(WindowMode::kFullScreen), "resize") << "as it was";
  EXPECT_EQ(given(WindowMode::kNormal), "not topmost, resize");
  EXPECT_FALSE(window.modes.IsFullScreen());
}

TEST(WindowModes, StatesThatComeWhileAChangeIsAppliedAreItsOwn) {
  Window window(true);
  window.Press('f');
  const WindowEffects effects = window.modes.Minimise(window.at);
  EXPECT_EQ(Describe(window.modes.StateGiven(WindowMode::kNormal)), "");
  window.Apply(effects);
  EXPECT_EQ(window.modes.Mode(), WindowMode::kMinimised);
}

TEST(MovedIntoReach, LeavesWhatCanBeTakenHoldOf) {
  const std::vector<PixelRect> screens = {{0, 0, 1600, 1000}, {1600, 0, 1280, 1024}};
  const std::tuple<PixelRect, PixelRect, const char*> cases[] = {
      {{10, 20, 800, 600}, {10, 20, 800, 600}, "on the first screen"},
      {{1700, 40, 800, 600}, {1700, 40, 800, 600}, "on the second one"},
      {{100, 1100, 800, 600}, {100, 400, 800, 600}, "below them"},
      {{5000, 40, 800, 600}, {800, 40, 800, 600}, "beside them"},
      {{2800, 0, 800, 600}, {2800, 0, 800, 600}, "80 pixels of the caption are enough"},
      {{2801, 0, 800, 600}, {800, 0, 800, 600}, "79 are not"},
      {{0, 984, 800, 600}, {0, 984, 800, 600}, "16 pixels of its height are enough"},
      {{0, 985, 800, 600}, {0, 400, 800, 600}, "15 are not"},
      {{5000, 5000, 2000, 1200}, {0, 0, 2000, 1200}, "larger than the screen"},
  };
  for (const auto& [stored, moved, why] : cases) EXPECT_EQ(MovedIntoReach(stored, screens), moved) << why;
  EXPECT_EQ(MovedIntoReach({5000, 40, 800, 600}, {}), (PixelRect{5000, 40, 800, 600}));
}

}  // namespace
}  // namespace pallomir
