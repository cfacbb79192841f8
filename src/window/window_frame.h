#pragma once

#include <functional>
#include <memory>

#include "base/trace.h"
#include "platform/event_loop.h"
#include "platform/main_window.h"
#include "settings/stored_choices.h"
#include "window/frame_view.h"
#include "window/normal_placement.h"
#include "window/window_modes.h"

namespace pallomir {

/// The main window's mode, size and place: what its buttons and the system make of them, and what is stored.
class WindowFrame {
 public:
  WindowFrame(FrameView& view, MainWindow& window, WindowChoices& stored, EventLoop& loop, Trace& trace);
  ~WindowFrame();

  /// What lies in the window is to be laid out again. Comes too when the window has just been minimised.
  std::function<void()> laidOut;

  // Life
  void Restore();  ///< puts the window where it was stored, within reach, and maximises it where it was
  void Open();     ///< the start-up is through: from now on the system's sizes and states count
  void Store();    ///< mode and place
  void Close();

  // Buttons and double click
  void Minimise() { Change(&WindowModes::Minimise); }
  void Normal() { Change(&WindowModes::Normal); }
  void Maximise() { Change(&WindowModes::Maximise); }
  void FullScreen() { Change(&WindowModes::FullScreen); }
  void ToggleMaximised() { Change(&WindowModes::ToggleMaximised); }

  // What the system tells
  void Resized();
  void Moved();
  void StateGiven(WindowMode state);  ///< the window has another state
  void MinimiseEnded();               ///< the minimised window is seen again

  void LayOut();
  bool IsMinimised() const { return modes_.Mode() == WindowMode::kMinimised; }

 private:
  void Change(WindowEffects (WindowModes::*change)(const WindowSurroundings&));
  void Apply(const WindowEffects& effects);
  WindowSurroundings Surroundings() const;
  void NotePlacement();
  void StorePlacement();

  FrameView& view_;
  MainWindow& window_;
  WindowChoices& stored_;
  Trace& trace_;
  bool open_ = false;
  WindowModes modes_;
  NormalPlacement placement_;
  std::unique_ptr<Timer> placementDelay_;
};

}  // namespace pallomir
